// SPDX-License-Identifier: Apache-2.0
#include "Actions/ActionKind.h"
#include "Actions/Executor.h"
#include "Actions/Safety.h"
#include "Actions/Trust.h"
#include "Agent/ActionSignature.h"
#include "Agent/AgentSession.h"
#include "Agent/SystemPrompt.h"
#include "Base/LocalizedError.h"
#include "Base/Text.h"

#include <QCoroFuture>
#include <QPointer>

#include <utility>

// The loop of one run. The session may be destroyed during any wait and must not be touched afterwards.

using namespace Qt::StringLiterals;

// State kept from step to step, for the duration of the run.
struct AgentSession::Run
{
    const int turnIndex;
    const std::stop_token cancellation;
    QList<ChatMessage> conversation;
    int invalidReplies = 0;
    QString previousSignature = {};
};

namespace {

constexpr int maxTokensPerReply = 200;
constexpr int maxCorrections = 2;

const QString accessibilityNote =
    u"Switched on accessibility, so that Orvane can read and operate applications."_s;

// The user-visible description of the current exception.
QString descriptionOfCurrentError()
{
    QString description;
    try {
        throw;
    } catch (const LocalizedError &error) {
        description = error.errorDescription();
    } catch (const std::exception &error) {
        description = Text::trimmed(Text::cleaned(QString::fromLocal8Bit(error.what())));
    } catch (...) {
        // No description available.
    }
    return description.isEmpty() ? u"Something unexpected went wrong."_s : description;
}

} // namespace

// Catches all errors of the loop, so that every run ends.
QCoro::Task<void> AgentSession::run(QString command, int turnIndex, std::stop_token cancellation)
{
    const QPointer<AgentSession> self(this);
    std::optional<QString> failure;
    try {
        co_await loop(command, turnIndex, cancellation);
    } catch (...) {
        failure = descriptionOfCurrentError();
    }
    if (self && failure)
        endAfterError(turnIndex, *failure);
}

QCoro::Task<void> AgentSession::loop(QString command, int turnIndex, std::stop_token cancellation)
{
    const QPointer<AgentSession> self(this);
    co_await m_models.loadIfNeeded();
    if (!self)
        co_return;
    if (m_models.state().kind != ModelManager::State::Kind::Loaded) {
        end(turnIndex, u"The local model isn't ready yet."_s, LogEntry::Kind::Failure);
        co_return;
    }

    const bool switchedOn = co_await Trust::switchAccessibilityOn(m_desktop);
    if (!self)
        co_return;
    if (switchedOn)
        appendEntry(turnIndex, LogEntry{.text = accessibilityNote, .kind = LogEntry::Kind::Info});

    const QString state = co_await Executor::observe(m_desktop);
    if (!self)
        co_return;
    const QList<ChatMessage> conversation = {
        {ChatMessage::Role::System, SystemPrompt::text()},
        {ChatMessage::Role::User, u"User: "_s + command + u"\nState: "_s + state},
    };
    const auto run = std::make_shared<Run>(Run{turnIndex, cancellation, conversation});
    for (int step = 0; step < maxSteps; ++step) {
        const Progress progress = co_await takeStep(run);
        if (progress == Progress::Ended)
            co_return;
    }
    end(turnIndex, u"Stopped after too many steps."_s, LogEntry::Kind::Failure);
}

QCoro::Task<AgentSession::Progress> AgentSession::takeStep(std::shared_ptr<Run> run)
{
    const std::optional<QString> reply = co_await nextReply(run);
    if (!reply)
        co_return Progress::Ended;

    const std::optional<AgentAction> action = AgentAction::parse(*reply);
    if (!action)
        co_return takeInvalidReply(*run, *reply);
    run->conversation.append({ChatMessage::Role::Assistant, Text::trimmed(*reply)});

    if (kindOf(*action) == ActionKind::Done) {
        const QString summary = action->arg(u"message"_s).value_or(u"Done"_s);
        end(run->turnIndex, summary, LogEntry::Kind::Success, summary);
        co_return Progress::Ended;
    }
    const QString signature = actionSignature(*action);
    if (signature == run->previousSignature) {
        end(run->turnIndex, u"Stopped: the same step was repeated."_s, LogEntry::Kind::Failure);
        co_return Progress::Ended;
    }
    run->previousSignature = signature;

    const Progress progress = co_await perform(run, *action);
    co_return progress;
}

// The model's next reply, or nothing if the run has ended. Engine errors end the run.
QCoro::Task<std::optional<QString>> AgentSession::nextReply(std::shared_ptr<Run> run)
{
    const QPointer<AgentSession> self(this);
    if (endIfCancelled(*run))
        co_return std::nullopt;
    setStatus(u"Thinking…"_s);
    clearPreview();

    const std::function<void(QString)> onToken = previewSink();
    const QString reply = co_await m_models.engine().generate(run->conversation, maxTokensPerReply, onToken);
    if (!self || endIfCancelled(*run))
        co_return std::nullopt;
    co_return reply;
}

// Shows the step, obtains approval if the policy requires it, and executes it.
QCoro::Task<AgentSession::Progress> AgentSession::perform(std::shared_ptr<Run> run, AgentAction action)
{
    const QPointer<AgentSession> self(this);
    const QString title = action.title();
    const LogEntry line{.text = title, .running = true};
    const QUuid entry = appendEntry(run->turnIndex, line);
    setStatus(title);
    clearPreview();

    const ActionTarget target = co_await ActionTarget::find(action, m_desktop);
    if (!self)
        co_return Progress::Ended;
    const Risk risk = Safety::assess(action, target);
    Approval approval = Approval::NotNeeded;
    if (risk.kind == Risk::Kind::Confirm) {
        setStatus(u"Waiting for approval: "_s + title);
        changeEntry(run->turnIndex, entry, title, LogEntry::Kind::Confirm, true);
        const QFuture<bool> answer = ask(action, risk.reason);
        // The user may have stopped the run during the lookup of the target.
        if (run->cancellation.stop_requested())
            resolve(false);
        const bool approved = co_await answer;
        if (!self)
            co_return Progress::Ended;
        if (!approved) {
            changeEntry(run->turnIndex, entry, u"Declined: "_s + title, LogEntry::Kind::Failure, false);
            finish(run->turnIndex, u"I didn't do that, as requested."_s);
            co_return Progress::Ended;
        }
        approval = Approval::Given;
    }
    const Progress progress = co_await execute(run, action, entry, target, approval);
    co_return progress;
}

// Executes the step and reports the outcome to the model.
QCoro::Task<AgentSession::Progress> AgentSession::execute(std::shared_ptr<Run> run, AgentAction action,
                                                          QUuid entry, ActionTarget target, Approval approval)
{
    const QPointer<AgentSession> self(this);
    const Desktop desktop = m_desktop;
    QString result;
    std::optional<QString> failure;
    try {
        // The approval holds for this target, whichever window it was given in.
        if (approval == Approval::Given)
            target = co_await ActionTarget::findApproved(action, target, desktop);
        result = co_await Executor::run(action, target, desktop);
    } catch (const LocalizedError &error) {
        failure = error.errorDescription();
    }
    if (!self)
        co_return Progress::Ended;
    if (failure)
        changeEntry(run->turnIndex, entry, action.title() + u" — "_s + *failure, LogEntry::Kind::Failure,
                    false);
    else
        changeEntry(run->turnIndex, entry, action.title(), LogEntry::Kind::Step, false);

    const QString state = co_await Executor::observe(desktop);
    if (!self)
        co_return Progress::Ended;
    const QString outcome = failure ? u"Error: "_s + *failure : u"Result: "_s + result;
    run->conversation.append({ChatMessage::Role::User, outcome + u"\nState: "_s + state});
    co_return Progress::NextStep;
}

AgentSession::Progress AgentSession::takeInvalidReply(Run &run, const QString &reply)
{
    if (run.invalidReplies == maxCorrections) {
        end(run.turnIndex, u"I couldn't work out a plan for that."_s, LogEntry::Kind::Failure);
        return Progress::Ended;
    }
    run.conversation.append({ChatMessage::Role::Assistant, reply});
    run.conversation.append(
        {ChatMessage::Role::User, u"Invalid. Reply with exactly one JSON action object."_s});
    ++run.invalidReplies;
    return Progress::NextStep;
}

bool AgentSession::endIfCancelled(const Run &run)
{
    if (!run.cancellation.stop_requested())
        return false;
    end(run.turnIndex, u"Cancelled"_s, LogEntry::Kind::Info);
    return true;
}
