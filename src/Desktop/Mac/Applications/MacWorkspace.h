// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Mac/Applications/MacFrontmost.h"
#include "Desktop/Mac/Applications/MacWindowList.h"
#include "Desktop/Mac/MacQueue.h"
#include "Desktop/Workspace.h"

// Applications through NSWorkspace, whose properties are updated by the main thread's event loop. A bundle's
// location is its path. `clock` and `windowList` must outlive this object. Thread: main.
class MacWorkspace : public Workspace
{
public:
    MacWorkspace(Clock &clock, MacWindowList &windowList);

    QCoro::Task<QList<RunningApplication>> runningApplications() override;
    QCoro::Task<std::optional<RunningApplication>> frontmostApplication() override;
    QCoro::Task<WorkspaceSnapshot> snapshot() override;
    QCoro::Task<void> activate(RunningApplication application) override;
    QCoro::Task<void> terminate(RunningApplication application) override;
    QCoro::Task<bool> isTerminated(RunningApplication application) override;
    QCoro::Task<QList<ApplicationFolder>> applicationFolders() override;

    // Returns nothing: on macOS, the well-known names are application names.
    QCoro::Task<std::optional<ApplicationBundle>> defaultForRole(QString name) override;

    QCoro::Task<void> openApplication(ApplicationBundle application) override;
    QCoro::Task<bool> open(QString url) override;
    QCoro::Task<void> open(QString url, ApplicationBundle application) override;
    QCoro::Task<void> reveal(QString path) override;

    // Whether this application receives the keys; this program counts like any other.
    bool hasKeys(const RunningApplication &application) const;

private:
    // The active application, or the one active before this program; nothing if unknown.
    std::optional<RunningApplication> activeApplication() const;
    // Waits until the opened application is in front. Throws PlatformError on timeout.
    QCoro::Task<void> comesForward(ApplicationBundle application, qint64 process);

    Clock &m_clock;
    MacWindowList &m_windowList;
    MacFrontmost m_frontmost;
    MacQueue m_queue{QStringLiteral("desktop.folders"), QStringLiteral("The disk")};
};
