// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/UserFolders.h"

#include <QDir>
#include <QHash>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

QString UserFolders::named(const QString &name)
{
    static const QHash<QString, QStandardPaths::StandardLocation> places{
        {u"Desktop"_s, QStandardPaths::DesktopLocation},
        {u"Downloads"_s, QStandardPaths::DownloadLocation},
        {u"Documents"_s, QStandardPaths::DocumentsLocation},
        {u"Pictures"_s, QStandardPaths::PicturesLocation},
        {u"Music"_s, QStandardPaths::MusicLocation},
        {u"Videos"_s, QStandardPaths::MoviesLocation},
    };
    const auto place = places.constFind(name);
    if (place == places.constEnd())
        return QString();
    const QString folder = QDir::cleanPath(QStandardPaths::writableLocation(*place));
    // The home folder itself means that the folder is disabled.
    return folder == QDir::cleanPath(QDir::homePath()) ? QString() : folder;
}
