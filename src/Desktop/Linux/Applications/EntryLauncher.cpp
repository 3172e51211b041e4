// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/EntryLauncher.h"

#include "Desktop/Linux/Applications/EntryCommand.h"
#include "Desktop/Linux/Applications/GLibPointers.h"
#include "Desktop/PlatformError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *entryGroup = G_KEY_FILE_DESKTOP_GROUP;

[[noreturn]] void fail(const QString &path, const GError *error)
{
    const QString reason = error ? QString::fromUtf8(error->message) : QString();
    const QString name = QFileInfo(path).completeBaseName();
    throw PlatformError(reason.isEmpty() ? u"“%1” couldn't be opened."_s.arg(name)
                                         : u"“%1” couldn't be opened: %2."_s.arg(name, reason));
}

GObjectPointer<GDesktopAppInfo> load(const QString &path)
{
    GObjectPointer<GDesktopAppInfo> application(
        g_desktop_app_info_new_from_filename(path.toUtf8().constData()));
    if (!application)
        fail(path, nullptr);
    const QString command = QString::fromUtf8(g_app_info_get_commandline(G_APP_INFO(application.get())));
    if (!EntryLauncher::isChromiumFamily(EntryCommand::program(command)))
        return application;

    const GKeyFilePointer file(g_key_file_new());
    if (!g_key_file_load_from_file(file.get(), path.toUtf8().constData(), G_KEY_FILE_NONE, nullptr))
        return application;
    const QString accessible = EntryCommand::withArgument(command, u"--force-renderer-accessibility"_s);
    g_key_file_set_string(file.get(), entryGroup, G_KEY_FILE_DESKTOP_KEY_EXEC,
                          accessible.toUtf8().constData());
    GObjectPointer<GDesktopAppInfo> changed(g_desktop_app_info_new_from_keyfile(file.get()));
    return changed ? std::move(changed) : std::move(application);
}

// Runs in the child between fork and exec: detaches it from our terminal's signals and our working directory.
// Ignores a directory that can't be entered, as desktops do.
void leaveOurSession(gpointer workingDirectory)
{
    setsid();
    const auto *path = static_cast<const char *>(workingDirectory);
    if (path && chdir(path) != 0)
        return;
}

void noteProcess(GDesktopAppInfo *, GPid process, gpointer list)
{
    static_cast<QList<qint64> *>(list)->append(process);
}

} // namespace

bool EntryLauncher::isChromiumFamily(const QString &executable)
{
    static const QStringList names{u"chromium"_s,        u"chrome"_s,          u"google-chrome"_s,
                                   u"brave"_s,           u"brave-browser"_s,   u"microsoft-edge"_s,
                                   u"vivaldi"_s,         u"opera"_s,           u"code"_s,
                                   u"codium"_s,          u"code-oss"_s,        u"slack"_s,
                                   u"discord"_s,         u"signal-desktop"_s,  u"element-desktop"_s,
                                   u"obsidian"_s,        u"teams-for-linux"_s, u"spotify"_s,
                                   u"chromium-browser"_s};
    QString name = QFileInfo(executable).fileName().toLower();
    for (const QString &channel : {u"-stable"_s, u"-beta"_s, u"-dev"_s, u"-unstable"_s, u"-insiders"_s}) {
        if (name.endsWith(channel))
            name.chop(channel.size());
    }
    if (names.contains(name))
        return true;
    // Programs built on Chromium include its resource files.
    const QString found = QStandardPaths::findExecutable(executable);
    const QString file = QFileInfo(found).canonicalFilePath();
    return !file.isEmpty() && QFileInfo::exists(QFileInfo(file).dir().filePath(u"chrome_100_percent.pak"_s));
}

QList<qint64> EntryLauncher::launch(const QString &path, const QStringList &urls,
                                    const QString &startupIdentifier)
{
    const GObjectPointer<GDesktopAppInfo> application = load(path);
    const GObjectPointer<GAppLaunchContext> context(g_app_launch_context_new());
    g_app_launch_context_setenv(context.get(), "DESKTOP_STARTUP_ID", startupIdentifier.toUtf8().constData());
    QList<QByteArray> texts;
    GList *list = nullptr;
    for (const QString &url : urls)
        texts.append(url.toUtf8());
    for (QByteArray &text : texts)
        list = g_list_append(list, text.data());

    // An entry may set a working directory; the default is the user's home folder.
    const GStringPointer ownPath(
        g_desktop_app_info_get_string(application.get(), G_KEY_FILE_DESKTOP_KEY_PATH));
    QByteArray home = QFile::encodeName(QDir::homePath());
    QList<qint64> processes;
    GError *error = nullptr;
    const int flags = G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL;
    const gboolean started = g_desktop_app_info_launch_uris_as_manager(
        application.get(), list, context.get(), GSpawnFlags(flags), leaveOurSession,
        ownPath ? nullptr : home.data(), noteProcess, &processes, &error);
    g_list_free(list);
    const GErrorPointer reason(error);
    if (!started)
        fail(path, reason.get());
    return processes;
}
