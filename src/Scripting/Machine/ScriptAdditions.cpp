// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Machine/ScriptAdditions.h"

#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptElements.h"
#include "Scripting/Values/ScriptNumbers.h"
#include "Scripting/Values/ScriptTextParts.h"

#include <QRandomGenerator>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const ScriptValue &directOf(const ScriptCommand &command)
{
    if (!command.direct)
        throw ScriptError(u"“%1” needs a value."_s.arg(command.name));
    return *command.direct;
}

ScriptValue count(const ScriptValue &value)
{
    const std::optional<ScriptValue> length = ScriptElements::property(value, u"length"_s);
    if (!length || !length->is<qint64>())
        throw ScriptError(u"Can’t count %1."_s.arg(ScriptCoercion::source(value)));
    return *length;
}

ScriptValue round(const ScriptCommand &command)
{
    using Rounding = ScriptNumbers::Rounding;
    static const QHash<QString, Rounding> ways{{u"up"_s, Rounding::Up},
                                               {u"down"_s, Rounding::Down},
                                               {u"toward zero"_s, Rounding::TowardZero},
                                               {u"to nearest"_s, Rounding::ToNearest},
                                               {u"as taught in school"_s, Rounding::AsTaughtInSchool}};
    const ScriptValue way = command.parameter(u"rounding"_s);
    const QString name = ScriptCoercion::text(way, {}).value_or(u"to nearest"_s);
    if (!ways.contains(name))
        throw ScriptError(u"Can’t round “%1”."_s.arg(name));
    const double number = ScriptCoercion::to(directOf(command), u"real"_s, {}).as<double>();
    return ScriptNumbers::rounded(number, ways.value(name));
}

// In characters from 1; 0 if the text doesn't occur. Obeys `considering` and `ignoring` for case only.
ScriptValue offset(const ScriptCommand &command, const ScriptSettings &settings)
{
    const QString wanted = ScriptCoercion::to(command.parameter(u"of"_s), u"text"_s, {}).as<QString>();
    const QString text = ScriptCoercion::to(command.parameter(u"in"_s), u"text"_s, {}).as<QString>();
    const bool ignoresCase = settings.comparison.ignored.testFlag(ScriptIgnored::Case);
    const qsizetype found =
        wanted.isEmpty() ? -1
                         : text.indexOf(wanted, 0, ignoresCase ? Qt::CaseInsensitive : Qt::CaseSensitive);
    if (found < 0)
        return qint64(0);
    return qint64(ScriptTextParts::of(text.left(found), u"character"_s, {})->size() + 1);
}

// Integers for integer limits, otherwise a real; from 0 to 1 without limits.
ScriptValue randomNumber(const ScriptCommand &command)
{
    const ScriptValue to = command.direct ? *command.direct : command.parameter(u"to"_s);
    const ScriptValue from = command.parameter(u"from"_s);
    QRandomGenerator &generator = *QRandomGenerator::global();
    const ScriptValue last = ScriptCoercion::to(to.isMissing() ? ScriptValue(1.0) : to, u"number"_s, {});
    const ScriptValue first =
        ScriptCoercion::to(from.isMissing() ? ScriptValue(qint64(0)) : from, u"number"_s, {});
    const double low = std::min(first.real(), last.real());
    const double high = std::max(first.real(), last.real());
    if (first.is<qint64>() && last.is<qint64>())
        return qint64(low) + qint64(generator.bounded(quint32(high - low) + 1));
    return low + generator.generateDouble() * (high - low);
}

ScriptValue characterOfCode(const ScriptCommand &command)
{
    const qint64 code = ScriptCoercion::to(directOf(command), u"integer"_s, {}).as<qint64>();
    if (code < 0 || code > 127)
        throw ScriptError(u"%1 is no ASCII character."_s.arg(code));
    return QString(QChar(static_cast<char16_t>(code)));
}

ScriptValue codeOfCharacter(const ScriptCommand &command)
{
    const QString text = ScriptCoercion::to(directOf(command), u"text"_s, {}).as<QString>();
    if (text.isEmpty() || text.front().unicode() > 127)
        throw ScriptError(u"%1 is no ASCII character."_s.arg(ScriptCoercion::source(text)));
    return qint64(text.front().unicode());
}

} // namespace

std::optional<ScriptValue> ScriptAdditions::perform(const ScriptCommand &command,
                                                    const ScriptSettings &settings)
{
    if (command.name == u"count")
        return count(directOf(command));
    if (command.name == u"get")
        return directOf(command);
    if (command.name == u"log")
        return ScriptValue();
    if (command.name == u"round")
        return round(command);
    if (command.name == u"offset")
        return offset(command, settings);
    if (command.name == u"random number")
        return randomNumber(command);
    if (command.name == u"ascii character")
        return characterOfCode(command);
    if (command.name == u"ascii number")
        return codeOfCharacter(command);
    return std::nullopt;
}
