// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Linux/Applications/LinuxLauncher.h"
#include "Desktop/Linux/WindowSystem/WindowSystem.h"
#include "Desktop/Workspace.h"

// Applications on a Linux desktop: running ones are found by their windows, installed ones by their desktop
// entries. `windowSystem`, `gio` and `clock` must outlive this object. Thread: main.
//
// An application counts as terminated if it has no window and its process has ended or belongs to another
// application that has a window. An application that runs in the background without a window has not
// terminated.
class LinuxWorkspace : public Workspace
{
public:
    LinuxWorkspace(WindowSystem &windowSystem, BoundedQueue &gio, Clock &clock);

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

    // All windows, with their parts.
    QCoro::Task<WindowSnapshot> windows();

    // Whether the application is a terminal emulator.
    QCoro::Task<bool> isTerminal(RunningApplication application);

    // The names of the programs that may show windows with this Wayland app_id.
    QCoro::Task<QStringList> programsOf(QString applicationIdentifier);

    // The frontmost application's window, with its part.
    QCoro::Task<std::optional<DesktopWindow>> frontmostWindow();

private:
    // The windows with their parts, and the desktop entries that determined these.
    struct WindowsAndEntries
    {
        WindowSnapshot snapshot;
        QList<DesktopEntry> entries;
    };
    QCoro::Task<WindowsAndEntries> windowsAndEntries();

    WindowSystem &m_windowSystem;
    BoundedQueue &m_gio;
    Clock &m_clock;
    LinuxLauncher m_launcher;
};
