// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/UserFolders.h"

#include <QDir>
#include <QHash>
#include <QStandardPaths>

QString UserFolders::named(const QString &name)
{
    static const QHash<QString, QStandardPaths::StandardLocation> places{
        {QStringLiteral("Desktop"), QStandardPaths::DesktopLocation},
        {QStringLiteral("Downloads"), QStandardPaths::DownloadLocation},
        {QStringLiteral("Documents"), QStandardPaths::DocumentsLocation},
        {QStringLiteral("Pictures"), QStandardPaths::PicturesLocation},
        {QStringLiteral("Music"), QStandardPaths::MusicLocation},
        {QStringLiteral("Videos"), QStandardPaths::MoviesLocation},
    };
    const auto place = places.constFind(name);
    if (place == places.constEnd())
        return QString();
    const QString folder = QDir::cleanPath(QStandardPaths::writableLocation(*place));
    // The home folder itself stands for a folder that is switched off.
    return folder == QDir::cleanPath(QDir::homePath()) ? QString() : folder;
}
