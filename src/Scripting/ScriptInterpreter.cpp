// SPDX-License-Identifier: Apache-2.0
#include "Scripting/ScriptInterpreter.h"

#include "Scripting/Language/ScriptParser.h"
#include "Scripting/Machine/ScriptCompiler.h"
#include "Scripting/Machine/ScriptMachine.h"
#include "Scripting/ScriptError.h"

#include <QCoroTimer>
#include <QElapsedTimer>

#include <exception>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// How long the main thread computes without a break.
constexpr auto piece = 4ms;
constexpr auto pieceOfDelay = 50ms;

class Limits
{
public:
    Limits(std::stop_token cancellation, std::chrono::milliseconds time)
        : m_cancellation(std::move(cancellation)), m_time(time)
    {
        m_clock.start();
    }

    // Throws if the script has to end.
    void check() const
    {
        if (m_cancellation.stop_requested())
            throw ScriptStopped(u"The script was cancelled."_s, ScriptError::UserCancelled);
        if (m_clock.elapsed() - m_paused > m_time.count())
            throw ScriptStopped(u"The script takes too long."_s, ScriptError::TimedOut);
    }

    // The time that a user takes for an answer isn't the script's.
    void pause() { m_pauseBegin = m_clock.elapsed(); }
    void resume() { m_paused += m_clock.elapsed() - m_pauseBegin; }

private:
    std::stop_token m_cancellation;
    std::chrono::milliseconds m_time;
    QElapsedTimer m_clock;
    qint64 m_pauseBegin = 0; // milliseconds
    qint64 m_paused = 0;
};

ScriptCode compiled(const QString &source)
{
    const ScriptNodePointer script = ScriptParser::parse(source);
    return ScriptCompiler::compile(*script);
}

// Looks at the limits every now and then.
QCoro::Task<void> delay(double seconds, const Limits &limits)
{
    QElapsedTimer clock;
    clock.start();
    while (static_cast<double>(clock.elapsed()) < seconds * 1000.0) {
        limits.check();
        const double rest = seconds * 1000.0 - static_cast<double>(clock.elapsed());
        const std::chrono::milliseconds pause(
            static_cast<int>(std::min(rest + 1.0, double(pieceOfDelay.count()))));
        co_await QCoro::sleepFor(pause);
    }
    limits.check();
}

ScriptError notUnderstood(const ScriptCommand &command)
{
    const QString receiver = command.application.value_or(u"The script"_s);
    const bool isProperty = command.name == u"get" || command.name == u"set";
    if (isProperty)
        return ScriptError(u"Can’t %1 %2."_s.arg(command.name, ScriptCoercion::source(*command.direct)),
                           ScriptError::NoSuchObject);
    return ScriptError(u"%1 doesn’t understand “%2”."_s.arg(receiver, command.name),
                       ScriptError::NotUnderstood);
}

// The host's answer, or the exception that the script can catch.
struct Answer
{
    std::optional<ScriptValue> value;
    std::optional<ScriptError> error;
};

QCoro::Task<Answer> answerTo(ScriptCommand command, ScriptHost &host)
{
    Answer answer;
    try {
        answer.value = co_await host.perform(command);
    } catch (const ScriptError &error) {
        answer.error = error;
    } catch (const LocalizedError &error) {
        answer.error = ScriptError(error.errorDescription());
    }
    if (!answer.value && !answer.error)
        answer.error = notUnderstood(command);
    co_return answer;
}

bool asksTheUser(const QString &command)
{
    return command == u"display dialog" || command == u"display alert" || command == u"choose from list";
}

QCoro::Task<void> carryOut(ScriptMachine &machine, ScriptHost &host, Limits &limits)
{
    const ScriptCommand command = machine.command();
    if (command.name == u"delay") {
        const ScriptValue seconds = command.direct.value_or(ScriptValue(qint64(0)));
        const std::optional<ScriptValue> number = ScriptCoercion::number(seconds);
        co_await delay(number ? number->real() : 0.0, limits);
        machine.answer({});
        co_return;
    }
    limits.pause();
    const Answer answer = co_await answerTo(command, host);
    if (asksTheUser(command.name))
        limits.resume();
    limits.check();
    if (answer.value)
        machine.answer(*answer.value);
    else
        machine.fail(*answer.error);
}

} // namespace

QCoro::Task<ScriptValue> ScriptInterpreter::run(QString source, ScriptHost &host,
                                                std::stop_token cancellation,
                                                std::chrono::milliseconds timeLimit)
{
    Limits limits(std::move(cancellation), timeLimit);
    ScriptMachine machine(compiled(source));
    QElapsedTimer sinceBreak;
    sinceBreak.start();
    while (true) {
        limits.check();
        const ScriptMachine::State state = machine.run(piece);
        if (state == ScriptMachine::State::Finished)
            co_return machine.result();
        if (state == ScriptMachine::State::Waiting)
            co_await carryOut(machine, host, limits);
        // A host may answer at once.
        if (sinceBreak.elapsed() >= piece.count()) {
            co_await QCoro::sleepFor(0ms);
            sinceBreak.start();
        }
    }
}
