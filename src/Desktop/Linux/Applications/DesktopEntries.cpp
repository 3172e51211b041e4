// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/DesktopEntries.h"

#include "Base/Text.h"
#include "Desktop/Linux/Applications/EntryCommand.h"
#include "Desktop/Linux/Applications/GLibPointers.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString suffix = u".desktop"_s;

DesktopEntry described(GDesktopAppInfo *information)
{
    GAppInfo *application = G_APP_INFO(information);
    DesktopEntry entry;
    entry.path = QDir::cleanPath(QString::fromUtf8(g_desktop_app_info_get_filename(information)));
    entry.name = Text::cleaned(QString::fromUtf8(g_app_info_get_display_name(application))).trimmed();
    const GStringPointer name(g_desktop_app_info_get_string(information, G_KEY_FILE_DESKTOP_KEY_NAME));
    entry.englishName = Text::cleaned(QString::fromUtf8(name.get())).trimmed();
    entry.windowClass = QString::fromUtf8(g_desktop_app_info_get_startup_wm_class(information));
    const QString command = QString::fromUtf8(g_app_info_get_commandline(application));
    entry.executable = QFileInfo(EntryCommand::program(command)).fileName();
    const QString categories = QString::fromUtf8(g_desktop_app_info_get_categories(information));
    entry.categories = categories.split(u';', Qt::SkipEmptyParts);
    const GStringPointer flatpak(g_desktop_app_info_get_string(information, "X-Flatpak"));
    entry.flatpak = QString::fromUtf8(flatpak.get());
    entry.isShown = g_app_info_should_show(application);
    return entry;
}

// The paths of the folder's entry files, relative to it.
QStringList entryFiles(const QString &folder)
{
    QStringList files;
    QDirIterator iterator(folder, {u'*' + suffix}, QDir::Files, QDirIterator::Subdirectories);
    while (iterator.hasNext())
        files.append(QDir(folder).relativeFilePath(iterator.next()).chopped(suffix.size()));
    // Sort without the suffix, so that "terminal" precedes "terminal-settings".
    std::sort(files.begin(), files.end());
    for (QString &file : files)
        file += suffix;
    return files;
}

QString identifierOf(const QString &relativeFile)
{
    return relativeFile.chopped(suffix.size()).replace(u'/', u'-');
}

std::optional<DesktopEntry> described(GAppInfo *application)
{
    if (!application || !G_IS_DESKTOP_APP_INFO(application))
        return std::nullopt;
    const DesktopEntry entry = described(G_DESKTOP_APP_INFO(application));
    return entry.path.isEmpty() ? std::nullopt : std::optional(entry);
}

} // namespace

QStringList DesktopEntries::folders()
{
    QStringList roots{QString::fromUtf8(g_get_user_data_dir())};
    for (const char *const *each = g_get_system_data_dirs(); *each; ++each)
        roots.append(QString::fromUtf8(*each));
    QStringList result;
    for (const QString &root : roots) {
        const QString folder = QDir::cleanPath(root + u"/applications"_s);
        if (QFileInfo(folder).isDir() && !result.contains(folder))
            result.append(folder);
    }
    return result;
}

QList<DesktopEntry> DesktopEntries::all()
{
    QList<DesktopEntry> result;
    QSet<QString> seen;
    for (const QString &folder : folders()) {
        for (const QString &file : entryFiles(folder)) {
            const QString identifier = identifierOf(file);
            if (seen.contains(identifier))
                continue;
            seen.insert(identifier);
            const QString path = folder + u'/' + file;
            const GObjectPointer<GDesktopAppInfo> information(
                g_desktop_app_info_new_from_filename(path.toUtf8().constData()));
            if (!information)
                continue;
            DesktopEntry entry = described(information.get());
            entry.identifier = identifier;
            entry.folder = folder;
            result.append(std::move(entry));
        }
    }
    return result;
}

std::optional<DesktopEntry> DesktopEntries::defaultForType(const QString &type)
{
    const GObjectPointer<GAppInfo> application(
        g_app_info_get_default_for_type(type.toUtf8().constData(), FALSE));
    return described(application.get());
}

std::optional<DesktopEntry> DesktopEntries::defaultForUrl(const QString &url)
{
    const GObjectPointer<GFile> file(g_file_new_for_uri(url.toUtf8().constData()));
    const GObjectPointer<GAppInfo> application(g_file_query_default_handler(file.get(), nullptr, nullptr));
    return described(application.get());
}
