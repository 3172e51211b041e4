// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Recording/RecordingJournal.h"
#include "Desktop/Workspace.h"

#include <QMap>
#include <QSet>

// In-memory applications: opening one starts it and brings it to the front; quitting ends it.
class RecordingWorkspace : public Workspace
{
public:
    explicit RecordingWorkspace(RecordingJournal &journal) : m_journal(journal) {}

    // Installs an application in a folder; a new folder is added last.
    ApplicationBundle install(const QString &name, const QString &folder = QStringLiteral("/Applications"));

    // Starts an application in the background. Process identifiers start at 101.
    RunningApplication start(const QString &name);
    RunningApplication start(const ApplicationBundle &bundle);
    void makeFrontmost(const RunningApplication &application);
    std::optional<RunningApplication> frontmost() const;

    QList<RunningApplication> running;
    std::optional<qint64> frontmostProcess;
    QList<ApplicationFolder> folders;
    QMap<QString, ApplicationBundle> roles; // by lower-case name, such as "finder"
    // On the screen, front to back. `addWindow` adds an ordinary one at the back.
    QList<WindowDescription> windows;
    void addWindow(const QString &ownerName, const QString &name = QString());
    QSet<qint64> waitingToQuit; // processes that show a save prompt instead of quitting
    bool opensURLs = true;      // whether the default handler succeeds

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

private:
    bool isRunning(qint64 processIdentifier) const;
    void bringForward(const ApplicationBundle &application);

    RecordingJournal &m_journal;
    qint64 m_lastProcess = 100;
};
