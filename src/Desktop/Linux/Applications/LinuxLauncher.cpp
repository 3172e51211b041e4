// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/LinuxLauncher.h"

#include "Desktop/Linux/Applications/DesktopEntries.h"
#include "Desktop/Linux/Applications/EntryLauncher.h"
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

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

constexpr qint64 startPatience = 10000; // ms; enough for a browser's first start on a slow computer
// ms until a window without an entry is attributed to the launch: an entry may run a program of another name.
constexpr qint64 unidentifiedPatience = 1500;
constexpr qint64 newWindowPatience = 700; // ms for a running application to open another window

constexpr int busLimit = 1000; // ms

QDBusMessage hasOwner(const QString &name)
{
    auto call = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                               u"org.freedesktop.DBus"_s, u"NameHasOwner"_s);
    call.setArguments({name});
    return call;
}

} // namespace

LinuxLauncher::LinuxLauncher(WindowSystem &windowSystem, BoundedQueue &gio, Clock &clock)
    : m_windowSystem(windowSystem), m_gio(gio), m_clock(clock)
{
}

QCoro::Task<LinuxLauncher::Launch> LinuxLauncher::start(ApplicationBundle application, QStringList urls)
{
    Launch launch;
    launch.application = application;
    launch.entries = co_await m_gio.run(&DesktopEntries::all);
    const WindowSnapshot before = co_await m_windowSystem.snapshot();
    launch.before = LinuxApplications::withParts(before, launch.entries);
    launch.wasRunning =
        LinuxApplications::windowToShow(application, launch.before, launch.entries) != nullptr;
    launch.startupIdentifier = co_await m_windowSystem.startupIdentifier();
    const QString identifier = launch.startupIdentifier;
    const auto job = [application, urls, identifier] {
        return EntryLauncher::launch(application.location, urls, identifier);
    };
    launch.processes = co_await m_gio.run(job, 10s);
    co_return launch;
}

const DesktopWindow *LinuxLauncher::newWindow(const WindowSnapshot &now, const Launch &launch, Accept accept)
{
    for (const std::uint32_t identifier : now.stacking) {
        const DesktopWindow *window = now.find(identifier);
        if (!window || !window->isOrdinary() || launch.before.find(identifier))
            continue;
        if (launch.processes.contains(window->process) ||
            window->startupIdentifier == launch.startupIdentifier)
            return window;
        const DesktopEntry *entry = entryOfWindow(launch.entries, *window);
        const bool isOwn = entry && entry->path == launch.application.location;
        const bool isUnidentified = !entry && window->process != QCoreApplication::applicationPid();
        if (isOwn || (isUnidentified && accept == Accept::Unidentified))
            return window;
    }
    return nullptr;
}

QCoro::Task<bool> LinuxLauncher::runsInBackground(Launch launch)
{
    if (std::any_of(launch.processes.cbegin(), launch.processes.cend(), &isRunningProcess))
        co_return true;
    // A D-Bus activatable application's well-known name is its entry id.
    const QString name = QFileInfo(launch.application.location).completeBaseName();
    const QDBusPendingCall call = QDBusConnection::sessionBus().asyncCall(hasOwner(name), busLimit);
    const QFuture<QDBusMessage> reply = DBusReply::of(call);
    const QDBusMessage answer = co_await reply;
    co_return answer.type() == QDBusMessage::ReplyMessage &&answer.arguments().value(0).toBool();
}

QCoro::Task<void> LinuxLauncher::open(ApplicationBundle application, QStringList urls)
{
    const Launch launch = co_await start(application, urls);
    QElapsedTimer elapsed;
    elapsed.start();
    while (!elapsed.hasExpired(launch.wasRunning ? newWindowPatience : startPatience)) {
        const WindowSnapshot now = co_await m_windowSystem.snapshot();
        const Accept accept = elapsed.hasExpired(unidentifiedPatience) ? Accept::Unidentified : Accept::Own;
        if (const DesktopWindow *window = newWindow(now, launch, accept)) {
            const DesktopWindow shown = *window;
            co_await m_windowSystem.bringForward(shown);
            co_return;
        }
        co_await m_clock.sleep(20ms);
    }
    // A running application may show the URL in an existing window.
    const WindowSnapshot last = co_await m_windowSystem.snapshot();
    const WindowSnapshot now = LinuxApplications::withParts(last, launch.entries);
    const DesktopWindow *window = LinuxApplications::windowToShow(application, now, launch.entries);
    if (!window) {
        const bool runs = co_await runsInBackground(launch);
        if (runs)
            co_return;
        throw PlatformError(u"“%1” was started but shows no window."_s.arg(application.displayName));
    }
    const DesktopWindow shown = *window;
    co_await m_windowSystem.bringForward(shown);
}
