// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/ShellExtension/ShellWindows.h"

#include "Desktop/Deadlines.h"
#include "Desktop/PlatformError.h"

#include <QCoreApplication>
#include <QElapsedTimer>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

ShellWindows::ShellWindows(ShellExtension &extension, Clock &clock) : m_extension(extension), m_clock(clock)
{
}

QCoro::Task<WindowSnapshot> ShellWindows::snapshot()
{
    return m_extension.windows();
}

QCoro::Task<void> ShellWindows::bringForward(DesktopWindow window)
{
    QElapsedTimer elapsed;
    elapsed.start();
    qint64 nextRequest = 0;
    while (!elapsed.hasExpired(Deadlines::focus.count())) {
        const WindowSnapshot now = co_await m_extension.windows();
        if (!now.find(window.identifier))
            throw PlatformError(u"The window “%1” is gone."_s.arg(window.title));
        if (now.activeWindow == window.identifier)
            co_return;
        if (elapsed.elapsed() >= nextRequest) {
            co_await m_extension.activate(window.identifier);
            nextRequest = elapsed.elapsed() + 500;
            continue;
        }
        co_await m_clock.sleep(5ms);
    }
    throw PlatformError(u"The window “%1” didn't come to the front."_s.arg(window.title));
}

QCoro::Task<void> ShellWindows::close(QList<DesktopWindow> windows)
{
    const WindowSnapshot now = co_await m_extension.windows();
    for (const DesktopWindow &window : windows) {
        if (now.find(window.identifier))
            co_await m_extension.close(window.identifier);
    }
}

QCoro::Task<QString> ShellWindows::startupIdentifier()
{
    // Only tells launches apart: the launched window is activated once it is there.
    co_return u"orvane-%1-%2"_s.arg(QCoreApplication::applicationPid()).arg(++m_launches);
}
