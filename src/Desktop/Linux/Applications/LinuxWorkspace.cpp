// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/LinuxWorkspace.h"

#include "Desktop/Linux/Applications/ApplicationRoles.h"
#include "Desktop/Linux/Applications/DesktopEntries.h"
#include "Desktop/Linux/Applications/LinuxApplications.h"
#include "Desktop/Linux/DBus/DBusReply.h"
#include "Desktop/Linux/Processes/RunningProcess.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// ms: the time a process has to end after its last window has closed.
constexpr qint64 farewell = 1000;

QList<ApplicationFolder> folderList()
{
    const QList<DesktopEntry> entries = DesktopEntries::all();
    QList<ApplicationFolder> result;
    for (const QString &folder : DesktopEntries::folders()) {
        ApplicationFolder listing{folder, {}};
        for (const DesktopEntry &entry : entries) {
            if (entry.folder == folder && entry.isShown)
                listing.entries.append({entry.name + u".app"_s, LinuxApplications::bundleOf(entry),
                                        LinuxApplications::namesOf(entry)});
        }
        result.append(std::move(listing));
    }
    return result;
}

std::optional<RunningApplication> frontmostOf(const WindowSnapshot &snapshot,
                                              const QList<DesktopEntry> &entries)
{
    const DesktopWindow *window = snapshot.frontmost(QCoreApplication::applicationPid());
    if (!window)
        return std::nullopt;
    return LinuxApplications::ofWindow(*window, snapshot, entries);
}

// The windows on the current desktop, front to back.
QList<WindowDescription> described(const WindowSnapshot &snapshot, const QList<DesktopEntry> &entries)
{
    QList<WindowDescription> result;
    for (const DesktopWindow &window : snapshot.frontToBack()) {
        if (!window.isOnScreen())
            continue;
        WindowDescription description;
        description.layer = 0;
        description.ownerProcessIdentifier = window.process;
        description.ownerName = LinuxApplications::ofWindow(window, snapshot, entries).localizedName;
        description.name = window.title;
        result.append(description);
    }
    return result;
}

QString urlOf(const QString &path)
{
    return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
}

std::optional<DesktopEntry> fillRole(const ApplicationRole &role)
{
    return ApplicationRoles::fill(role, DesktopEntries::all(), &DesktopEntries::defaultForType);
}

QDBusMessage showItems(const QString &path)
{
    auto call =
        QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
                                       u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    call.setArguments({QStringList{urlOf(path)}, QString()});
    return call;
}

} // namespace

LinuxWorkspace::LinuxWorkspace(WindowSystem &windowSystem, BoundedQueue &gio, Clock &clock)
    : m_windowSystem(windowSystem), m_gio(gio), m_clock(clock), m_launcher(windowSystem, gio, clock)
{
}

QCoro::Task<LinuxWorkspace::WindowsAndEntries> LinuxWorkspace::windowsAndEntries()
{
    const WindowSnapshot snapshot = co_await m_windowSystem.snapshot();
    const QList<DesktopEntry> entries = co_await m_gio.run(&DesktopEntries::all);
    co_return WindowsAndEntries{LinuxApplications::withParts(snapshot, entries), entries};
}

QCoro::Task<QList<RunningApplication>> LinuxWorkspace::runningApplications()
{
    const WindowsAndEntries now = co_await windowsAndEntries();
    co_return LinuxApplications::running(now.snapshot, now.entries);
}

QCoro::Task<std::optional<RunningApplication>> LinuxWorkspace::frontmostApplication()
{
    const WindowsAndEntries now = co_await windowsAndEntries();
    co_return frontmostOf(now.snapshot, now.entries);
}

QCoro::Task<WindowSnapshot> LinuxWorkspace::windows()
{
    const WindowsAndEntries now = co_await windowsAndEntries();
    co_return now.snapshot;
}

QCoro::Task<bool> LinuxWorkspace::isTerminal(RunningApplication application)
{
    const QList<DesktopEntry> entries = co_await m_gio.run(&DesktopEntries::all);
    const QString location = application.bundle ? application.bundle->location : QString();
    co_return std::any_of(entries.cbegin(), entries.cend(), [&location](const DesktopEntry &entry) {
        return entry.path == location && entry.categories.contains("TerminalEmulator"_L1);
    });
}

QCoro::Task<QStringList> LinuxWorkspace::programsOf(QString applicationIdentifier)
{
    const QList<DesktopEntry> entries = co_await m_gio.run(&DesktopEntries::all);
    QStringList programs{applicationIdentifier, applicationIdentifier.section(u'.', -1)};
    DesktopWindow window;
    window.className = applicationIdentifier;
    window.applicationIdentifier = applicationIdentifier;
    if (const DesktopEntry *entry = entryOfWindow(entries, window))
        programs.append(LinuxApplications::namesOf(*entry).program);
    co_return programs;
}

QCoro::Task<std::optional<DesktopWindow>> LinuxWorkspace::frontmostWindow()
{
    const WindowSnapshot now = co_await windows();
    const DesktopWindow *window = now.frontmost(QCoreApplication::applicationPid());
    if (!window)
        co_return std::nullopt;
    co_return *window;
}

QCoro::Task<WorkspaceSnapshot> LinuxWorkspace::snapshot()
{
    const WindowsAndEntries now = co_await windowsAndEntries();
    WorkspaceSnapshot snapshot;
    snapshot.frontmost = frontmostOf(now.snapshot, now.entries);
    snapshot.windows = described(now.snapshot, now.entries);
    co_return snapshot;
}

QCoro::Task<void> LinuxWorkspace::activate(RunningApplication application)
{
    const WindowsAndEntries now = co_await windowsAndEntries();
    const DesktopWindow *window = now.snapshot.windowToShow(application.processIdentifier, application.part);
    if (!window)
        throw PlatformError(u"%1 has no window any more."_s.arg(application.shownName()));
    const DesktopWindow shown = *window;
    co_await m_windowSystem.bringForward(shown);
}

QCoro::Task<void> LinuxWorkspace::terminate(RunningApplication application)
{
    const WindowsAndEntries now = co_await windowsAndEntries();
    const QList<DesktopWindow> closed =
        now.snapshot.windowsToClose(application.processIdentifier, application.part);
    co_await m_windowSystem.close(closed);
}

QCoro::Task<bool> LinuxWorkspace::isTerminated(RunningApplication application)
{
    const WindowsAndEntries now = co_await windowsAndEntries();
    const qint64 process = application.processIdentifier;
    if (now.snapshot.windowToShow(process, application.part))
        co_return false;
    // A client on another computer has no process here.
    if (process < 0 || now.snapshot.windowToShow(process))
        co_return true;
    QElapsedTimer waiting;
    waiting.start();
    while (isRunningProcess(process) && !waiting.hasExpired(farewell))
        co_await m_clock.sleep(20ms);
    co_return !isRunningProcess(process);
}

QCoro::Task<QList<ApplicationFolder>> LinuxWorkspace::applicationFolders()
{
    return m_gio.run(&folderList);
}

QCoro::Task<std::optional<ApplicationBundle>> LinuxWorkspace::defaultForRole(QString name)
{
    const ApplicationRole *role = ApplicationRoles::named(name);
    if (!role)
        co_return std::nullopt;
    const auto search = [role] { return fillRole(*role); };
    const std::optional<DesktopEntry> entry = co_await m_gio.run(search);
    if (!entry)
        co_return std::nullopt;
    co_return LinuxApplications::bundleOf(*entry);
}

QCoro::Task<void> LinuxWorkspace::openApplication(ApplicationBundle application)
{
    const WindowsAndEntries now = co_await windowsAndEntries();
    if (const DesktopWindow *window =
            LinuxApplications::windowToShow(application, now.snapshot, now.entries)) {
        const DesktopWindow shown = *window;
        co_await m_windowSystem.bringForward(shown);
        co_return;
    }
    const QStringList nothing;
    co_await m_launcher.open(application, nothing);
}

QCoro::Task<bool> LinuxWorkspace::open(QString url)
{
    const auto search = [url] { return DesktopEntries::defaultForUrl(url); };
    try {
        const std::optional<DesktopEntry> entry = co_await m_gio.run(search);
        if (!entry)
            co_return false;
        const QStringList urls{url};
        co_await m_launcher.open(LinuxApplications::bundleOf(*entry), urls);
        co_return true;
    } catch (const PlatformError &) {
        co_return false;
    }
}

QCoro::Task<void> LinuxWorkspace::open(QString url, ApplicationBundle application)
{
    return m_launcher.open(application, {url});
}

QCoro::Task<void> LinuxWorkspace::reveal(QString path)
{
    constexpr int limit = 5000; // the file browser may have to start
    const QDBusPendingCall call = QDBusConnection::sessionBus().asyncCall(showItems(path), limit);
    const QFuture<QDBusMessage> reply = DBusReply::of(call);
    const QDBusMessage answer = co_await reply;
    if (answer.type() == QDBusMessage::ReplyMessage)
        co_return;
    const QString folder = urlOf(QFileInfo(path).absolutePath());
    co_await open(folder);
}
