// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Portals/RestoreToken.h"

#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

QString path()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return folder + u"/Orvane/keyboard-permission"_s;
}

} // namespace

QString RestoreToken::read()
{
    QFile file(path());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

void RestoreToken::write(const QString &token)
{
    QDir().mkpath(QFileInfo(path()).path());
    QSaveFile file(path());
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        return;
    file.write(token.toUtf8());
    file.commit();
}
