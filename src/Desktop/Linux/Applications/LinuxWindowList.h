// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Linux/X11/Display.h"
#include "Desktop/WindowList.h"

// The windows of the current desktop as the window manager tells them. Main thread. `display` and `gio`
// outlive this object.
class LinuxWindowList : public WindowList
{
public:
    LinuxWindowList(X11Display &display, BoundedQueue &gio);

    QCoro::Task<QList<WindowDescription>> onScreenWindows() override;
    qint64 ownProcessIdentifier() const override;

private:
    X11Display &m_display;
    BoundedQueue &m_gio;
};
