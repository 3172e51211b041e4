// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Linux/Applications/LinuxLauncher.h"
#include "Desktop/Linux/X11/Display.h"
#include "Desktop/Workspace.h"

// The applications of an X11 desktop: windows tell which ones run, desktop entries which are installed, and
// the desktop's library starts them. Main thread. `display`, `gio` and `clock` outlive this object.
//
// An application has terminated when it shows no window any more and its process has ended, or belongs to
// another application that shows one. One that goes on in the background without a window has not.
class LinuxWorkspace : public Workspace
{
public:
    LinuxWorkspace(X11Display &display, BoundedQueue &gio, Clock &clock);

    QCoro::Task<QList<RunningApplication>> runningApplications() override;
    QCoro::Task<std::optional<RunningApplication>> frontmostApplication() override;
    QCoro::Task<WorkspaceSnapshot> snapshot() override;
    QCoro::Task<void> activate(RunningApplication application) override;
    QCoro::Task<void> terminate(RunningApplication application) override;
    QCoro::Task<bool> isTerminated(RunningApplication application) override;
    QCoro::Task<QList<ApplicationFolder>> applicationFolders() override;
    QCoro::Task<std::optional<ApplicationBundle>> defaultForRole(QString name) override;
    QCoro::Task<void> openApplication(ApplicationBundle application) override;
    QCoro::Task<bool> open(QString url) override;
    QCoro::Task<void> open(QString url, ApplicationBundle application) override;
    QCoro::Task<void> reveal(QString path) override;

    // The window of the frontmost application, with its part.
    QCoro::Task<std::optional<X11Window>> frontmostWindow();

    // The titles of what the user has in front of the application with this process, the foremost first.
    QCoro::Task<QStringList> titlesInFront(qint64 processIdentifier);

private:
    // The windows with their parts, and the entries by which these were told.
    struct Windows
    {
        X11Snapshot snapshot;
        QList<DesktopEntry> entries;
    };
    QCoro::Task<Windows> windows();

    X11Display &m_display;
    BoundedQueue &m_gio;
    Clock &m_clock;
    LinuxLauncher m_launcher;
};
