// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Session/LockServices.h"
#include "Desktop/Linux/Session/SessionType.h"
#include "Desktop/Linux/X11/Display.h"
#include "Desktop/Session.h"

#include <functional>

// The session on Linux. Screen locks are detected through the desktop's D-Bus services and, since many
// lockers have none, on X11 by grabs and windows and on Wayland by their processes. Thread: main.
class LinuxSession : public Session
{
public:
    // What makes actions impossible at the moment; see Session::obstacle.
    using Obstacle = std::function<std::optional<QString>()>;

    // `display` is the X server of an X11 session, otherwise null; it must outlive this object.
    LinuxSession(X11Display *display, Obstacle obstacle);

    std::optional<QString> obstacle() const override { return m_obstacle(); }
    QCoro::Task<bool> isLocked() override;

private:
    QCoro::Task<bool> isScreenTaken();

    X11Display *m_display;
    const Obstacle m_obstacle;
    LockServices m_services;
    BoundedQueue m_processes{QStringLiteral("orvane.lockers"), QStringLiteral("The list of processes")};
};
