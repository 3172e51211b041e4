// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Linux/ShellExtension/ShellExtension.h"
#include "Desktop/Linux/WindowSystem/WindowSystem.h"

// The windows of GNOME Shell. `extension` and `clock` must outlive this object. Thread: main.
class ShellWindows : public WindowSystem
{
public:
    ShellWindows(ShellExtension &extension, Clock &clock);

    QCoro::Task<WindowSnapshot> snapshot() override;
    QCoro::Task<void> bringForward(DesktopWindow window) override;
    QCoro::Task<void> close(QList<DesktopWindow> windows) override;
    QCoro::Task<QString> startupIdentifier() override;

private:
    ShellExtension &m_extension;
    Clock &m_clock;
    int m_launches = 0;
};
