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

// Runs one user task at a time: asks the local model for one action, lets the safety policy decide whether
// the user must approve it, has it carried out, feeds the outcome and a fresh description of the screen back
// to the model, and repeats until the model is done, repeats itself, runs out of steps, or something ends the
// run.
//
// Everything happens on the main thread. The views observe the properties; whoever shows a log line by line
// uses the finer signals. The session may be destroyed while a task runs: the loop then ends at its next
// resume. The model manager and the desktop services are not owned; they outlive the session and every action
// begun by it.
class AgentSession : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<Turn> turns READ turns NOTIFY turnsChanged)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    Q_PROPERTY(QString streamPreview READ streamPreview NOTIFY streamPreviewChanged)
    Q_PROPERTY(std::optional<PendingConfirmation> pending READ pending NOTIFY pendingChanged)

public:
    // The most model replies that one task may use.
    static constexpr int maxSteps = 12;

    AgentSession(ModelManager &models, const Desktop &desktop, QObject *parent = nullptr);
    ~AgentSession() override;

    // Every task of this session, oldest first. A turn keeps its index until the history is cleared.
    const QList<Turn> &turns() const { return m_turns; }
    bool isRunning() const { return m_isRunning; }
    // What the running task is at, in one line; empty when idle.
    QString status() const { return m_status; }
    // What the model has written so far in the current step.
    QString streamPreview() const { return m_streamPreview; }
    // Set while the loop waits for the user's answer.
    const std::optional<PendingConfirmation> &pending() const { return m_pending; }

    // Starts a task and returns at once. Blank text, or a task while one runs, is ignored.
    void submit(const QString &command);

    // The user's answer to the pending confirmation. Without one, nothing happens.
    void resolve(bool approved);

    // The user's stop button: answers a pending confirmation with no, and ends the run before its next step.
    // A reply that the model has begun is still waited for. Without a running task, nothing happens.
    void stop();

    // Forgets all turns; ignored while a task runs. From a slot of a signal of ours, it takes effect once all
    // slots have run: until then the indices that they are given hold.
    void clearHistory();

    // A slot of any of these may call what stands above. It must not destroy the session, save by
    // `deleteLater`: the program ends then.
Q_SIGNALS:
    // Before each change of properties; what changes together is announced together.
    void willChange();

    // After the change.
    void turnsChanged();
    void isRunningChanged();
    void statusChanged();
    void streamPreviewChanged();
    void pendingChanged();

    // What exactly changed in `turns`, right after it did.
    void turnAppended(int turnIndex);
    void logEntryAppended(int turnIndex, int entryIndex);
    void logEntryChanged(int turnIndex, int entryIndex);
    void historyCleared();
    // The run has ended, and the session is idle.
    void turnFinished(int turnIndex);

private:
    enum class Progress { NextStep, Ended };
    enum class Approval { NotNeeded, Given };
    struct Run;
    class Announcement;

    // The loop. Each of these looks whether the session still exists after every wait, and tells its caller
    // that the run has ended when it does not. What they throw ends the run.
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

    // Ends the run, with a last line in the log.
    void end(int turnIndex, const QString &text, LogEntry::Kind kind,
             const std::optional<QString> &summary = std::nullopt);
    void endAfterError(int turnIndex, const QString &description);
    void finish(int turnIndex, const std::optional<QString> &summary);

    QUuid appendEntry(int turnIndex, const LogEntry &entry);
    void changeEntry(int turnIndex, QUuid id, const QString &text, LogEntry::Kind kind, bool running);

    void setStatus(const QString &status);
    void setPending(const std::optional<PendingConfirmation> &pending);
    void clearPreview();
    // Where the engine's pieces of the current reply go; callable from any thread.
    std::function<void(QString)> previewSink();

    ModelManager &m_models;
    const Desktop m_desktop;

    // How many calls, one inside the other, are emitting signals; and what has been put off meanwhile.
    int m_announcements = 0;
    bool m_clearsLater = false;

    QList<Turn> m_turns;
    bool m_isRunning = false;
    QString m_status;
    QString m_streamPreview;
    std::optional<PendingConfirmation> m_pending;

    // Counts the clearings of the preview: a piece that belongs to an earlier reply comes too late.
    quint64 m_previewGeneration = 0;
    // The step that waits for the user's answer.
    std::optional<QPromise<bool>> m_confirmation;
    // The task started by the latest `submit`, and how to cancel it.
    QCoro::Task<void> m_task;
    std::stop_source m_cancellation;
};
