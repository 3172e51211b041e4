// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/TransferOptions.h"

QUrl TransferOptions::addressOf(const QUrl &file) const
{
    if (!mirror)
        return file;
    QUrl result = *mirror;
    QString folder = mirror->path();
    while (folder.endsWith(u'/'))
        folder.chop(1);
    result.setPath(folder + file.path());
    return result;
}
