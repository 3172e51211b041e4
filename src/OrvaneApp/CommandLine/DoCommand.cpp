// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/DoCommand.h"

#include "OrvaneApp/CommandLine/ExitStatus.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

const QString question = u"Allow this? (y/n)"_s;

// Mark and style of a completed log line.
struct Look
{
    QString mark;
    Terminal::Style style;
};

Look lookOf(LogEntry::Kind kind)
{
    switch (kind) {
    case LogEntry::Kind::Step:
        return {u"✓"_s, Terminal::Style::Plain};
    case LogEntry::Kind::Success:
        return {u"✓"_s, Terminal::Style::Good};
    case LogEntry::Kind::Failure:
        return {u"✗"_s, Terminal::Style::Bad};
    case LogEntry::Kind::Info:
        return {u"•"_s, Terminal::Style::Dim};
    case LogEntry::Kind::Confirm:
        return {u"?"_s, Terminal::Style::Asking};
    }
    Q_UNREACHABLE();
}

} // namespace

DoCommand::DoCommand(ModelManager &models, AgentSession &session, Dialogs &dialogs, Terminal &terminal,
                     AnswerReader &answers, QObject *parent)
    : QObject(parent), m_models(models), m_session(session), m_terminal(terminal), m_answers(answers),
      m_scriptsQuestions(dialogs, terminal, answers)
{
}

DoCommand::~DoCommand() = default;

void DoCommand::start(const QString &task)
{
    watchSession();
    m_beginning = begin(task);
}

void DoCommand::interrupt()
{
    m_isInterrupted = true;
    if (m_session.pending())
        m_terminal.line(QString()); // ends the question's line
    m_session.stop();
    m_answers.cancel();
    m_terminal.line(u"Stopping before the next step; Ctrl+C again quits at once."_s, Terminal::Style::Dim);
}

QCoro::Task<void> DoCommand::begin(QString task)
{
    const QPointer<DoCommand> self(this);
    m_terminal.showProgress(u"Loading %1…"_s.arg(m_models.selected().name));
    co_await m_models.loadIfNeeded();
    if (!self)
        co_return;
    m_terminal.hideProgress();
    if (m_models.state().kind != ModelManager::State::Kind::Loaded) {
        reportNotReady(m_models, m_terminal);
        Q_EMIT finished(ExitStatus::notReady);
    } else if (m_isInterrupted) {
        Q_EMIT finished(ExitStatus::endedOtherwise);
    } else {
        m_session.submit(task);
    }
}

void DoCommand::watchSession()
{
    connect(&m_session, &AgentSession::statusChanged, this, &DoCommand::showProgress);
    connect(&m_session, &AgentSession::streamPreviewChanged, this, &DoCommand::showProgress);
    connect(&m_session, &AgentSession::logEntryAppended, this, &DoCommand::showEntry);
    connect(&m_session, &AgentSession::logEntryChanged, this, &DoCommand::showEntry);
    connect(&m_session, &AgentSession::pendingChanged, this, &DoCommand::ask);
    connect(&m_session, &AgentSession::turnFinished, this, &DoCommand::showEnd);
    connect(&m_scriptsQuestions, &TerminalDialogs::asked, this, &DoCommand::showProgress);
    connect(&m_answers, &AnswerReader::answered, this, &DoCommand::answer);
    connect(&m_answers, &AnswerReader::notUnderstood, this, &DoCommand::awaitAnswer);
}

void DoCommand::showProgress()
{
    // While a question is open, its line is the answer's.
    if (m_session.pending() || m_scriptsQuestions.isAsking())
        return;
    if (m_session.status().isEmpty())
        m_terminal.hideProgress();
    else
        m_terminal.showProgress(m_session.status(), m_session.streamPreview());
}

void DoCommand::showEntry(int turnIndex, int entryIndex)
{
    const LogEntry &entry = m_session.turns()[turnIndex].log[entryIndex];
    if (entry.running)
        return;
    const Look look = lookOf(entry.kind);
    m_terminal.line(look.mark + u' ' + entry.text, look.style);
}

void DoCommand::ask()
{
    const std::optional<PendingConfirmation> &pending = m_session.pending();
    if (!pending)
        return;
    m_terminal.hideProgress();
    m_terminal.line(u"? "_s + pending->action.title(), Terminal::Style::Asking);
    // Behind a bar, so that the model's text cannot pass for the program's.
    m_terminal.block(pending->shownReason(), u"  │ "_s);
    if (m_answers.canAsk() && m_terminal.isInteractive()) {
        awaitAnswer();
    } else {
        m_terminal.line(u"  There is no terminal to ask at, so the answer is no."_s);
        m_session.resolve(false);
    }
}

void DoCommand::awaitAnswer()
{
    // In this order: the reader discards input typed before it starts.
    m_answers.start();
    m_terminal.prompt(question);
}

void DoCommand::answer(bool yes)
{
    m_session.resolve(yes);
    showProgress();
}

void DoCommand::showEnd(int turnIndex)
{
    m_terminal.hideProgress();
    const Turn &turn = m_session.turns()[turnIndex];
    const bool isSaid = !turn.log.isEmpty() && turn.log.constLast().text == turn.summary;
    if (turn.summary && !isSaid)
        m_terminal.line(*turn.summary);
    Q_EMIT finished(exitStatus(turn));
}

int DoCommand::exitStatus(const Turn &turn)
{
    if (turn.log.isEmpty() || !turn.summary)
        return ExitStatus::endedOtherwise;
    // A summary without success means the user declined.
    return turn.log.constLast().kind == LogEntry::Kind::Success ? ExitStatus::done : ExitStatus::declined;
}

void DoCommand::reportNotReady(const ModelManager &models, Terminal &terminal)
{
    const ModelManager::State state = models.state();
    const QString name = models.selected().name;
    if (state.kind == ModelManager::State::Kind::Failed)
        terminal.error(u"%1 can't be used: %2"_s.arg(name, state.message));
    else
        terminal.error(u"%1 isn't on this machine yet."_s.arg(name));
    terminal.error(u"Get it with: orvane models download"_s);
}
