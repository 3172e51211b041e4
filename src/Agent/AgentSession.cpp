// SPDX-License-Identifier: Apache-2.0
#include "Agent/AgentSession.h"

#include "Base/Text.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>
#include <utility>

// Published state and commands of the session; the loop is in AgentLoop.cpp.

// Marks a function that is emitting signals. A slot may re-enter the session, but changes that would
// invalidate what later slots rely on are deferred or forbidden.
class AgentSession::Announcement
{
public:
    explicit Announcement(AgentSession &session) : m_session(session) { ++m_session.m_announcements; }
    ~Announcement()
    {
        if (--m_session.m_announcements == 0 && std::exchange(m_session.m_clearsLater, false))
            m_session.clearHistory();
    }
    Announcement(const Announcement &) = delete;
    Announcement &operator=(const Announcement &) = delete;

private:
    AgentSession &m_session;
};

AgentSession::AgentSession(ModelManager &models, const Desktop &desktop, QObject *parent)
    : QObject(parent), m_models(models), m_desktop(desktop)
{
}

AgentSession::~AgentSession()
{
    // The emitting function would continue with freed memory, in release builds too.
    if (m_announcements > 0)
        qFatal("An AgentSession was destroyed by a slot of its own signal; use deleteLater");
    // Lets a loop that waits for an answer resume and end.
    if (m_confirmation) {
        m_confirmation->addResult(false);
        m_confirmation->finish();
    }
}

void AgentSession::submit(const QString &command)
{
    const QString task = Text::trimmed(command);
    if (task.isEmpty() || m_isRunning)
        return;
    const Announcement announcement(*this);
    Q_EMIT willChange();
    // A slot may have submitted another task.
    if (m_isRunning)
        return;
    const int turnIndex = static_cast<int>(m_turns.size());
    m_turns.append(Turn{.command = task});
    m_isRunning = true;
    // Reset before the signals, so that a slot can already stop the task.
    m_cancellation = std::stop_source();
    Q_EMIT turnsChanged();
    Q_EMIT turnAppended(turnIndex);
    Q_EMIT isRunningChanged();

    const auto start = [this, task, turnIndex, cancellation = m_cancellation.get_token()] {
        m_task = run(task, turnIndex, cancellation);
    };
    QMetaObject::invokeMethod(this, start, Qt::QueuedConnection);
}

void AgentSession::resolve(bool approved)
{
    // Take the promise first: a slot may call `resolve` again.
    std::optional<QPromise<bool>> confirmation = std::exchange(m_confirmation, std::nullopt);
    setPending(std::nullopt);
    if (!confirmation)
        return;
    confirmation->addResult(approved);
    confirmation->finish();
}

void AgentSession::stop()
{
    m_cancellation.request_stop();
    m_desktop.scripting.interrupt();
    m_desktop.dialogs.withdraw();
    resolve(false);
}

void AgentSession::clearHistory()
{
    m_clearsLater = m_announcements > 0;
    if (m_clearsLater || m_isRunning || m_turns.isEmpty())
        return;
    const Announcement announcement(*this);
    Q_EMIT willChange();
    m_turns.clear();
    Q_EMIT turnsChanged();
    Q_EMIT historyCleared();
}

QFuture<bool> AgentSession::ask(const AgentAction &action, const QString &reason)
{
    // Create the promise first: the answer can arrive while the change is announced.
    m_confirmation.emplace();
    m_confirmation->start();
    const QFuture<bool> answer = m_confirmation->future();
    setPending(PendingConfirmation{.action = action, .reason = reason});
    return answer;
}

void AgentSession::end(int turnIndex, const QString &text, LogEntry::Kind kind,
                       const std::optional<QString> &summary)
{
    appendEntry(turnIndex, LogEntry{.text = text, .kind = kind});
    finish(turnIndex, summary);
}

// Withdraws the question and marks running steps as failed.
void AgentSession::endAfterError(int turnIndex, const QString &description)
{
    resolve(false);
    const QList<LogEntry> log = m_turns.at(turnIndex).log;
    for (const LogEntry &entry : log) {
        if (entry.running)
            changeEntry(turnIndex, entry.id, entry.text, LogEntry::Kind::Failure, false);
    }
    end(turnIndex, description, LogEntry::Kind::Failure);
}

void AgentSession::finish(int turnIndex, const std::optional<QString> &summary)
{
    const Announcement announcement(*this);
    const bool hadStatus = !m_status.isEmpty();
    const bool hadPreview = !m_streamPreview.isEmpty();
    Q_EMIT willChange();
    m_turns[turnIndex].finished = true;
    m_turns[turnIndex].summary = summary;
    m_isRunning = false;
    m_status.clear();
    m_streamPreview.clear();
    ++m_previewGeneration;
    Q_EMIT turnsChanged();
    if (hadStatus)
        Q_EMIT statusChanged();
    if (hadPreview)
        Q_EMIT streamPreviewChanged();
    Q_EMIT isRunningChanged();
    Q_EMIT turnFinished(turnIndex);
}

QUuid AgentSession::appendEntry(int turnIndex, const LogEntry &entry)
{
    const Announcement announcement(*this);
    Q_EMIT willChange();
    m_turns[turnIndex].log.append(entry);
    const int entryIndex = static_cast<int>(m_turns[turnIndex].log.size()) - 1;
    Q_EMIT turnsChanged();
    Q_EMIT logEntryAppended(turnIndex, entryIndex);
    return entry.id;
}

void AgentSession::changeEntry(int turnIndex, QUuid id, const QString &text, LogEntry::Kind kind,
                               bool running)
{
    const Announcement announcement(*this);
    // Emit before the lookup: a slot may copy the list, which then detaches.
    Q_EMIT willChange();
    QList<LogEntry> &log = m_turns[turnIndex].log;
    const auto entry =
        std::find_if(log.begin(), log.end(), [id](const LogEntry &one) { return one.id == id; });
    Q_ASSERT(entry != log.end());
    const int entryIndex = static_cast<int>(entry - log.begin());
    entry->text = text;
    entry->kind = kind;
    entry->running = running;
    Q_EMIT turnsChanged();
    Q_EMIT logEntryChanged(turnIndex, entryIndex);
}

void AgentSession::setStatus(const QString &status)
{
    if (m_status == status)
        return;
    const Announcement announcement(*this);
    Q_EMIT willChange();
    m_status = status;
    Q_EMIT statusChanged();
}

void AgentSession::setPending(const std::optional<PendingConfirmation> &pending)
{
    if (!m_pending && !pending)
        return;
    const Announcement announcement(*this);
    Q_EMIT willChange();
    m_pending = pending;
    Q_EMIT pendingChanged();
}

void AgentSession::clearPreview()
{
    ++m_previewGeneration;
    if (m_streamPreview.isEmpty())
        return;
    const Announcement announcement(*this);
    Q_EMIT willChange();
    m_streamPreview.clear();
    Q_EMIT streamPreviewChanged();
}

std::function<void(QString)> AgentSession::previewSink()
{
    // Called on the engine's thread, where the session must not be accessed: it may be gone.
    return [self = QPointer<AgentSession>(this), generation = m_previewGeneration](const QString &piece) {
        const auto append = [self, generation, piece] {
            if (!self || self->m_previewGeneration != generation)
                return;
            const Announcement announcement(*self);
            Q_EMIT self->willChange();
            self->m_streamPreview += piece;
            Q_EMIT self->streamPreviewChanged();
        };
        QMetaObject::invokeMethod(QCoreApplication::instance(), append, Qt::QueuedConnection);
    };
}
