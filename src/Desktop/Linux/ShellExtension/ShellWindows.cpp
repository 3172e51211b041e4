// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/ShellExtension/ShellWindows.h"

#include "Desktop/Linux/WindowSystem/Activation.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

ShellWindows::ShellWindows(ShellExtension &extension, Clock &clock) : m_extension(extension), m_clock(clock)
{
}

QCoro::Task<WindowSnapshot> ShellWindows::snapshot()
{
    return m_extension.windows();
}

QCoro::Task<void> ShellWindows::bringForward(DesktopWindow window)
{
    const auto request = [this](std::uint32_t identifier) { return m_extension.activate(identifier); };
    return Activation::bringForward(*this, m_clock, window, request);
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
