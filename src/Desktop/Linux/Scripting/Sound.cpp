// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/Sound.h"

#include "Desktop/Linux/Scripting/SoundServer.h"
#include "Desktop/Linux/Scripting/SpeechService.h"
#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// A script that beeps a million times is a nuisance.
constexpr qint64 maxBeeps = 10;
// For the server's slowest answers, one after the other.
constexpr std::chrono::milliseconds limit = 4 * Deadlines::answer;
// The range of `set volume 3.5`.
constexpr double oldMaximum = 7.0;

int percent(const ScriptValue &value, double maximum)
{
    const double number = ScriptCoercion::to(value, u"real"_s, {}).real();
    return static_cast<int>(std::lround(std::clamp(number, 0.0, maximum) / maximum * 100.0));
}

// What `set volume` changes.
struct Change
{
    std::optional<int> output;
    std::optional<int> input;
    std::optional<bool> muted;

    explicit Change(const ScriptCommand &command)
    {
        if (command.parameters.contains(u"alert volume"_s))
            throw ScriptError(u"There is no alert volume on this computer."_s);
        if (command.direct)
            output = percent(*command.direct, oldMaximum);
        if (command.parameters.contains(u"output volume"_s))
            output = percent(command.parameter(u"output volume"_s), 100.0);
        if (command.parameters.contains(u"input volume"_s))
            input = percent(command.parameter(u"input volume"_s), 100.0);
        if (command.parameters.contains(u"output muted"_s))
            muted = ScriptCoercion::to(command.parameter(u"output muted"_s), u"boolean"_s, {}).as<bool>();
    }

    void carryOut() const
    {
        SoundServer server;
        if (output)
            server.setOutput(*output);
        if (input)
            server.setInput(*input);
        if (muted)
            server.muteOutput(*muted);
    }
};

struct Levels
{
    std::optional<SoundServer::Level> output;
    std::optional<SoundServer::Level> input;
};

Levels currentLevels()
{
    SoundServer server;
    return {server.output(), server.input()};
}

ScriptValue percentOf(const std::optional<SoundServer::Level> &level)
{
    return level ? ScriptValue(qint64(level->percent)) : ScriptValue();
}

} // namespace

QCoro::Task<std::optional<ScriptValue>> Sound::perform(ScriptCommand command)
{
    std::optional<ScriptValue> answer = ScriptValue();
    if (command.name == "beep"_L1)
        co_await beep(command);
    else if (command.name == "set volume"_L1)
        co_await setVolume(command);
    else if (command.name == "get volume settings"_L1)
        answer = co_await settings();
    else if (command.name == "say"_L1)
        co_await say(command);
    else
        answer = std::nullopt;
    co_return answer;
}

QCoro::Task<void> Sound::beep(ScriptCommand command)
{
    const ScriptValue wanted = command.direct.value_or(ScriptValue(qint64(1)));
    const qint64 times = ScriptCoercion::to(wanted, u"integer"_s, {}).as<qint64>();
    const auto sound = [] { SoundServer().beep(); };
    for (qint64 i = 0; i < std::min(times, maxBeeps); ++i)
        co_await m_worker.run(sound, limit);
}

QCoro::Task<void> Sound::setVolume(ScriptCommand command)
{
    const Change change(command);
    const auto carryOut = [change] { change.carryOut(); };
    co_await m_worker.run(carryOut, limit);
}

QCoro::Task<ScriptValue> Sound::settings()
{
    const Levels levels = co_await m_worker.run(&currentLevels, limit);
    const ScriptValue muted = levels.output ? ScriptValue(levels.output->isMuted) : ScriptValue();
    co_return ScriptValue::record({{u"output volume"_s, percentOf(levels.output)},
                                   {u"input volume"_s, percentOf(levels.input)},
                                   {u"alert volume"_s, ScriptValue()},
                                   {u"output muted"_s, muted}});
}

QCoro::Task<void> Sound::say(ScriptCommand command)
{
    const ScriptValue wanted = command.direct.value_or(ScriptValue());
    const QString text = ScriptCoercion::to(wanted, u"text"_s, {}).as<QString>();
    const auto speak = [text] { SpeechService::say(text); };
    co_await m_worker.run(speak, limit);
}
