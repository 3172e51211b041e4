// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/DownloadName.h"

#include <QStringList>

using namespace Qt::StringLiterals;

QString downloadName(const QUrl &url)
{
    const QStringList components = url.path(QUrl::FullyDecoded).split(u'/', Qt::SkipEmptyParts);
    const QString last = components.isEmpty() ? QString() : components.last();
    const bool usable = !last.isEmpty() && last != u"." && last != u"..";
    return usable ? last : u"model.gguf"_s;
}
