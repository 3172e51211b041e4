// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Session/LockServices.h"
#include "Desktop/Linux/Session/SessionType.h"
#include "Desktop/Linux/X11/Display.h"
#include "Desktop/Session.h"

// The session on Linux. What locks its screen is asked for in every way that lockers have: by the services of
// the desktop, and, under X11, by what the screen shows, since many lockers have no service. Main thread.
// `display` outlives this object.
class LinuxSession : public Session
{
public:
    LinuxSession(X11Display &display, SessionType type);

    std::optional<QString> obstacle() const override;
    QCoro::Task<bool> isLocked() override;

private:
    QCoro::Task<bool> isScreenTaken();

    X11Display &m_display;
    const SessionType m_type;
    LockServices m_services;
};
