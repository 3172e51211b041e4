// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Session/LockServices.h"
#include "Desktop/Linux/Session/SessionType.h"
#include "Desktop/Linux/X11/Display.h"
#include "Desktop/Session.h"

// The session on Linux. Screen locks are detected through the desktop's D-Bus services and, on X11, by grabs
// and windows, since many lockers have no service. `display` must outlive this object. Thread: main.
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
