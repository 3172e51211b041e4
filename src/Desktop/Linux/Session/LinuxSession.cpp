// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Session/LinuxSession.h"

#include "Desktop/Linux/Session/LockerProcesses.h"
#include "Desktop/Linux/X11/Grabs.h"

LinuxSession::LinuxSession(X11Display *display, Obstacle obstacle)
    : m_display(display), m_obstacle(std::move(obstacle))
{
}

QCoro::Task<bool> LinuxSession::isLocked()
{
    // Start both before waiting.
    const auto lookingAtScreen = isScreenTaken();
    const auto askingServices = m_services.isScreenLocked();
    const bool isTaken = co_await lookingAtScreen;
    const bool isSaidToBe = co_await askingServices;
    co_return isTaken || isSaidToBe;
}

QCoro::Task<bool> LinuxSession::isScreenTaken()
{
    try {
        if (!m_display)
            co_return co_await m_processes.run(&LockerProcesses::isAnyRunning);
        const auto look = [this] { return X11Grabs::isScreenLocked(m_display->connection()); };
        co_return co_await m_display->run(look);
    } catch (const PlatformError &) {
        // Without a responding X server, nothing is locked.
        co_return false;
    }
}
