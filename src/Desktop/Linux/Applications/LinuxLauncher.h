// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Clock.h"
#include "Desktop/Linux/Applications/DesktopEntry.h"
#include "Desktop/Linux/X11/Display.h"
#include "Desktop/Workspace.h"

// Starts applications and brings what they show to the front, so that keys that follow reach them. Main
// thread. `display`, `gio` and `clock` outlive this object.
class LinuxLauncher
{
public:
    LinuxLauncher(X11Display &display, BoundedQueue &gio, Clock &clock);

    // Starts the application with the URLs (none: by itself) and returns when its window is in front; one
    // that shows none within ten seconds has to be there at least, as in the tray. Throws PlatformError when
    // it cannot be started, or is not there.
    QCoro::Task<void> open(ApplicationBundle application, QStringList urls);

private:
    // What tells the windows that come of a launch.
    struct Launch
    {
        ApplicationBundle application;
        QList<DesktopEntry> entries;
        X11Snapshot before;
        QString startupIdentifier;
        QList<qint64> processes;
        bool wasRunning = false;
    };

    QCoro::Task<Launch> start(ApplicationBundle application, QStringList urls);
    // Whether the application runs without a window: by its process, or by its name on the session bus.
    static QCoro::Task<bool> runsInBackground(Launch launch);
    enum class Welcome { Own, Strangers };
    static const X11Window *newWindow(const X11Snapshot &now, const Launch &launch, Welcome welcome);

    X11Display &m_display;
    BoundedQueue &m_gio;
    Clock &m_clock;
    int m_launches = 0;
};
