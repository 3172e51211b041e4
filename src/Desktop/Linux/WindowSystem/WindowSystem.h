// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/WindowSystem/WindowSnapshot.h"

#include <QCoroTask>
#include <QList>
#include <QString>

// The windows of all applications, as the X server or the Wayland compositor reports them. All operations are
// bounded in time. Throws PlatformError. Thread: main.
class WindowSystem
{
public:
    virtual ~WindowSystem() = default;

    virtual QCoro::Task<WindowSnapshot> snapshot() = 0;

    // Activates the window and waits until its application has the keyboard focus. Throws if the window no
    // longer exists or isn't active within Deadlines::focus.
    virtual QCoro::Task<void> bringForward(DesktopWindow window) = 0;

    // Sends each window a close request.
    virtual QCoro::Task<void> close(QList<DesktopWindow> windows) = 0;

    // A new identifier for the launch of an application. It lets the application's window take the focus, and
    // may identify this window (see DesktopWindow::startupIdentifier).
    virtual QCoro::Task<QString> startupIdentifier() = 0;
};
