// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Mac/Applications/MacFrontmost.h"
#include "Desktop/Mac/Applications/MacWindowList.h"
#include "Desktop/Mac/MacQueue.h"
#include "Desktop/Workspace.h"

// The applications as AppKit's workspace knows them; a bundle's location is its path. Main thread, whose
// event loop keeps the workspace's answers up to date. `clock` and `windowList` outlive this object.
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

    // None: here the well-known names are those of applications.
    QCoro::Task<std::optional<ApplicationBundle>> defaultForRole(QString name) override;

    QCoro::Task<void> openApplication(ApplicationBundle application) override;
    QCoro::Task<bool> open(QString url) override;
    QCoro::Task<void> open(QString url, ApplicationBundle application) override;
    QCoro::Task<void> reveal(QString path) override;

    // Whether keys go to this application now; our own window counts as any other.
    bool hasKeys(const RunningApplication &application) const;

private:
    // The one active now, or before our own window; none where there is none but ours.
    std::optional<RunningApplication> activeApplication() const;
    // Waits until what was opened is in front. Throws PlatformError when it does not come.
    QCoro::Task<void> comesForward(ApplicationBundle application, qint64 process);

    Clock &m_clock;
    MacWindowList &m_windowList;
    MacFrontmost m_frontmost;
    MacQueue m_queue{QStringLiteral("desktop.folders"), QStringLiteral("The disk")};
};
