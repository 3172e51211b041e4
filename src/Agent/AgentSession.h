// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Agent/PendingConfirmation.h"
#include "Agent/Turn.h"
#include "Desktop/Desktop.h"
#include "Models/ModelManager.h"

#include <QCoroTask>
#include <QFuture>
#include <QList>
#include <QObject>
#include <QPromise>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

// Runs one user task at a time: asks the model for one action, has the user confirm it if the safety policy
// requires that, executes it, returns the outcome and a fresh observation to the model, and repeats until the
// model is done, repeats itself, runs out of steps, or the run is stopped or fails.
//
// Thread: main. Views observe the properties; line-by-line logs use the finer signals. The session may be
// destroyed while a task runs; the loop then ends at its next resume. The model manager and the desktop
// services are not owned and must outlive the session and every action it started.
class AgentSession : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<Turn> turns READ turns NOTIFY turnsChanged)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    Q_PROPERTY(QString streamPreview READ streamPreview NOTIFY streamPreviewChanged)
    Q_PROPERTY(std::optional<PendingConfirmation> pending READ pending NOTIFY pendingChanged)

public:
    // Maximum number of model replies per task.
    static constexpr int maxSteps = 12;

    AgentSession(ModelManager &models, const Desktop &desktop, QObject *parent = nullptr);
    ~AgentSession() override;

    // All tasks of this session, oldest first. Indices are stable until the history is cleared.
    const QList<Turn> &turns() const { return m_turns; }
    bool isRunning() const { return m_isRunning; }
    // One line about the running task; empty when idle.
    QString status() const { return m_status; }
    // What the model has generated in the current step.
    QString streamPreview() const { return m_streamPreview; }
    // Set while the loop waits for the user's answer.
    const std::optional<PendingConfirmation> &pending() const { return m_pending; }

    // Starts a task asynchronously. Ignored for blank text or while a task runs.
    void submit(const QString &command);

    // Answers the pending confirmation; does nothing without one.
    void resolve(bool approved);

    // Declines a pending confirmation and ends the run before its next step; a reply being generated is
    // awaited first, a running script is ended. Does nothing without a running task.
    void stop();

    // Removes all turns; ignored while a task runs. Called from a slot of this object's signals, it is
    // deferred until all slots have run, so that their indices stay valid.
    void clearHistory();

    // Slots may call the functions above. They may destroy the session only by `deleteLater`; anything else
    // aborts.
Q_SIGNALS:
    // Emitted before each change of properties; simultaneous changes are announced together.
    void willChange();

    // Emitted after the change.
    void turnsChanged();
    void isRunningChanged();
    void statusChanged();
    void streamPreviewChanged();
    void pendingChanged();

    // Details of a change of `turns`, emitted right after it.
    void turnAppended(int turnIndex);
    void logEntryAppended(int turnIndex, int entryIndex);
    void logEntryChanged(int turnIndex, int entryIndex);
    void historyCleared();
    // The run has ended; the session is idle.
    void turnFinished(int turnIndex);

private:
    enum class Progress { NextStep, Ended };
    enum class Approval { NotNeeded, Given };
    struct Run;
    class Announcement;

    // The loop. After every wait, each coroutine checks that the session still exists, and reports the run as
    // ended if not. An exception ends the run.
    QCoro::Task<void> loop(QString command, int turnIndex, std::stop_token cancellation);
    QCoro::Task<void> run(QString command, int turnIndex, std::stop_token cancellation);
    QCoro::Task<Progress> takeStep(std::shared_ptr<Run> run);
    QCoro::Task<std::optional<QString>> nextReply(std::shared_ptr<Run> run);
    QCoro::Task<Progress> perform(std::shared_ptr<Run> run, AgentAction action);
    QCoro::Task<Progress> execute(std::shared_ptr<Run> run, AgentAction action, QUuid entry,
                                  ActionTarget target, Approval approval);
    Progress takeInvalidReply(Run &run, const QString &reply);
    bool endIfCancelled(const Run &run);

    // Shows the confirmation; the future holds the user's answer.
    QFuture<bool> ask(const AgentAction &action, const QString &reason);

    // Appends a last log line and ends the run.
    void end(int turnIndex, const QString &text, LogEntry::Kind kind,
             const std::optional<QString> &summary = std::nullopt);
    void endAfterError(int turnIndex, const QString &description);
    void finish(int turnIndex, const std::optional<QString> &summary);

    QUuid appendEntry(int turnIndex, const LogEntry &entry);
    void changeEntry(int turnIndex, QUuid id, const QString &text, LogEntry::Kind kind, bool running);

    void setStatus(const QString &status);
    void setPending(const std::optional<PendingConfirmation> &pending);
    void clearPreview();
    // Receives the pieces of the current reply. Any thread.
    std::function<void(QString)> previewSink();

    ModelManager &m_models;
    const Desktop m_desktop;

    // Nesting depth of functions that are emitting signals, and the work deferred meanwhile.
    int m_announcements = 0;
    bool m_clearsLater = false;

    QList<Turn> m_turns;
    bool m_isRunning = false;
    QString m_status;
    QString m_streamPreview;
    std::optional<PendingConfirmation> m_pending;

    // Incremented when the preview is cleared; pieces of an earlier reply are dropped.
    quint64 m_previewGeneration = 0;
    // The promise of the user's answer.
    std::optional<QPromise<bool>> m_confirmation;
    // The latest task and its cancellation.
    QCoro::Task<void> m_task;
    std::stop_source m_cancellation;
};
