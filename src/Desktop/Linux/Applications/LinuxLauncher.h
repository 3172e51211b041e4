// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Clock.h"
#include "Desktop/Linux/Applications/DesktopEntry.h"
#include "Desktop/Linux/WindowSystem/WindowSystem.h"
#include "Desktop/Workspace.h"

// Starts applications and brings their windows to the front, so that subsequent keys reach them.
// `windowSystem`, `gio` and `clock` must outlive this object. Thread: main.
class LinuxLauncher
{
public:
    LinuxLauncher(WindowSystem &windowSystem, BoundedQueue &gio, Clock &clock);

    // Starts the application with the URLs, if any, and returns once its window is in front, or after ten
    // seconds if it runs without a window (in the tray). Throws PlatformError if it can't be started or isn't
    // running.
    QCoro::Task<void> open(ApplicationBundle application, QStringList urls);

private:
    // What identifies the windows of a launch.
    struct Launch
    {
        ApplicationBundle application;
        QList<DesktopEntry> entries;
        WindowSnapshot before;
        QString startupIdentifier;
        QList<qint64> processes;
        bool wasRunning = false;
    };

    QCoro::Task<Launch> start(ApplicationBundle application, QStringList urls);
    // Whether the launched process is running, or the application's well-known name has an owner.
    static QCoro::Task<bool> runsInBackground(Launch launch);
    enum class Accept { Own, Unidentified };
    static const DesktopWindow *newWindow(const WindowSnapshot &now, const Launch &launch, Accept accept);

    WindowSystem &m_windowSystem;
    BoundedQueue &m_gio;
    Clock &m_clock;
};
