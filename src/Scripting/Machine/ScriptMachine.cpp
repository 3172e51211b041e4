// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Machine/ScriptMachine.h"

#include "Scripting/Machine/ScriptAdditions.h"
#include "Scripting/ScriptError.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

using Op = ScriptOpcode;

namespace {

constexpr int instructionsPerClockReading = 32;
// How much a script may produce before its memory is measured.
constexpr qsizetype unitsPerCheck = 1024 * 1024;
constexpr qsizetype mostDelimiters = 32;

qsizetype ownUnits(const ScriptValue &value)
{
    return value.is<QString>() ? 1 + value.as<QString>().size() : 1;
}

ScriptValue simpleObject(ScriptObject::Kind kind)
{
    ScriptObject object;
    object.kind = kind;
    return std::make_shared<const ScriptObject>(object);
}

} // namespace

ScriptMachine::ScriptMachine(ScriptCode code) : m_code(std::move(code)) {}

ScriptMachine::State ScriptMachine::run(std::chrono::microseconds time)
{
    QElapsedTimer clock;
    clock.start();
    while (!m_isFinished && !m_isWaiting) {
        if (m_instructions % instructionsPerClockReading == 0 &&
            std::chrono::nanoseconds(clock.nsecsElapsed()) > time) {
            ++m_instructions;
            return State::Paused;
        }
        if (++m_instructions > mostInstructions)
            throw ScriptStopped(u"The script takes too many steps."_s, ScriptError::TimedOut);
        try {
            checkMemory();
            execute(m_code.instructions.at(static_cast<std::size_t>(m_next++)));
        } catch (const ScriptStopped &) {
            throw;
        } catch (const ScriptError &error) {
            caught(error);
        }
    }
    return m_isFinished ? State::Finished : State::Waiting;
}

void ScriptMachine::execute(const ScriptInstruction &instruction)
{
    if (instruction.opcode <= Op::DefineProperty)
        executeVariable(instruction);
    else if (instruction.opcode <= Op::SetElement)
        executeValue(instruction);
    else if (instruction.opcode <= Op::Raise)
        executeControl(instruction);
    else
        executeLoop(instruction);
}

void ScriptMachine::executeVariable(const ScriptInstruction &instruction)
{
    switch (instruction.opcode) {
    case Op::Push:
        push(m_code.constants.at(static_cast<std::size_t>(instruction.a)));
        break;
    case Op::Drop:
        pop();
        break;
    case Op::Duplicate:
        push(ScriptValues::duplicate(pop()));
        m_produced += ScriptValues::units({&m_values.back()});
        break;
    case Op::LoadVariable:
        load(nameOf(instruction.a), false);
        break;
    case Op::LoadTerm:
        load(nameOf(instruction.a), instruction.b != 0);
        break;
    case Op::LoadTarget:
        push(target());
        break;
    case Op::LoadScript:
        push(simpleObject(ScriptObject::Kind::Script));
        break;
    case Op::LoadLanguage:
        push(simpleObject(ScriptObject::Kind::Language));
        break;
    case Op::LoadResult:
        push(m_result);
        break;
    case Op::StoreResult:
        m_result = pop();
        break;
    case Op::StoreVariable:
        store(nameOf(instruction.a), pop());
        break;
    case Op::StoreLocal:
        m_variables.declareLocal(nameOf(instruction.a), pop());
        break;
    case Op::StoreTerm:
        storeTerm(nameOf(instruction.a), pop());
        break;
    case Op::StoreContents:
        storeContents(nameOf(instruction.a), pop());
        break;
    case Op::DeclareGlobals:
        for (const QString &name : labelsOf(instruction.a))
            m_variables.declareGlobal(name);
        break;
    case Op::DeclareLocals:
        for (const QString &name : labelsOf(instruction.a))
            m_variables.declareLocal(name);
        break;
    default:
        m_variables.defineProperty(nameOf(instruction.a), pop());
        break;
    }
}

void ScriptMachine::executeControl(const ScriptInstruction &instruction)
{
    switch (instruction.opcode) {
    case Op::Jump:
        m_next = instruction.a;
        break;
    case Op::JumpIfFalse:
        m_next = ScriptOperators::truth(pop()) ? m_next : instruction.a;
        break;
    case Op::JumpIfFalseOrDrop:
    case Op::JumpIfTrueOrDrop: {
        const bool isTrue = ScriptOperators::truth(pop());
        if (isTrue != (instruction.opcode == Op::JumpIfTrueOrDrop))
            break;
        push(isTrue);
        m_next = instruction.a;
        break;
    }
    case Op::CheckBoolean:
        push(ScriptOperators::truth(pop()));
        break;
    case Op::Call:
        call(instruction);
        break;
    case Op::Return:
        returnFromCall();
        break;
    case Op::Command:
        perform(instruction);
        break;
    case Op::EnterTell:
        m_targets.push_back(pop());
        break;
    case Op::LeaveTell:
        m_targets.pop_back();
        break;
    case Op::EnterConsidering:
        enterConsidering(labelsOf(instruction.a));
        break;
    case Op::LeaveConsidering: {
        // The delimiters aren't part of it.
        const ScriptDelimiters delimiters = settings().delimiters;
        m_settings.pop_back();
        settings().delimiters = delimiters;
        break;
    }
    case Op::EnterTry:
        m_tries.push_back({instruction.a, heights()});
        break;
    case Op::LeaveTry:
        m_tries.pop_back();
        break;
    case Op::LoadErrorMessage:
        push(m_errorMessage);
        break;
    case Op::LoadErrorNumber:
        push(qint64(m_errorNumber));
        break;
    default:
        raise();
        break;
    }
}

void ScriptMachine::executeLoop(const ScriptInstruction &instruction)
{
    switch (instruction.opcode) {
    case Op::BeginTimes:
        m_loops.push_back(ScriptLoop::times(pop()));
        break;
    case Op::BeginRange: {
        const ScriptValue step = pop();
        const ScriptValue to = pop();
        m_loops.push_back(ScriptLoop::range(pop(), to, step));
        break;
    }
    case Op::BeginList:
    case Op::BeginFilter:
        m_loops.push_back(ScriptLoop::list(pop()));
        break;
    case Op::NextRound:
    case Op::NextCandidate: {
        const std::optional<ScriptValue> value = m_loops.back().next();
        m_loops.back().variable = instruction.a;
        if (!value)
            m_next = instruction.b;
        else if (instruction.opcode == Op::NextCandidate)
            m_targets.push_back(*value);
        else if (instruction.a >= 0)
            store(nameOf(instruction.a), *value);
        break;
    }
    case Op::EndLoop:
        m_loops.pop_back();
        break;
    case Op::KeepCandidate: {
        const bool isKept = ScriptOperators::truth(pop());
        if (isKept)
            m_loops.back().kept.append(m_targets.back());
        m_targets.pop_back();
        break;
    }
    default: {
        const QList<ScriptValue> kept = m_loops.back().kept;
        m_loops.pop_back();
        pushNew(ScriptValue::list(kept));
        break;
    }
    }
}

// Counts what is produced. Lists inside a new list have been counted before.
void ScriptMachine::pushNew(ScriptValue value)
{
    m_produced += ownUnits(value);
    if (value.is<ScriptValue::List>()) {
        for (const ScriptValue &item : std::as_const(value.items()))
            m_produced += ownUnits(item);
    }
    push(std::move(value));
}

ScriptValue ScriptMachine::pop()
{
    ScriptValue value = std::move(m_values.back());
    m_values.pop_back();
    return value;
}

QList<ScriptValue> ScriptMachine::popSeveral(int count)
{
    QList<ScriptValue> values(m_values.end() - count, m_values.end());
    m_values.erase(m_values.end() - count, m_values.end());
    return values;
}

// Measures what is alive whenever a certain amount has been produced.
void ScriptMachine::checkMemory()
{
    if (m_produced < unitsPerCheck)
        return;
    m_produced = 0;
    std::vector<const ScriptValue *> values{&m_result};
    for (const ScriptValue &value : m_values)
        values.push_back(&value);
    for (const ScriptValue &value : m_targets)
        values.push_back(&value);
    for (const ScriptLoop &loop : m_loops)
        loop.collect(values);
    m_variables.collect(values);
    if (ScriptValues::units(values) > ScriptLimits::units)
        throw ScriptStopped(u"The script needs too much memory."_s, ScriptError::TooLarge);
}

ScriptMachine::Heights ScriptMachine::heights() const
{
    return {m_values.size(), m_targets.size(), m_settings.size(),
            m_loops.size(),  m_tries.size(),   m_calls.size()};
}

void ScriptMachine::restore(const Heights &heights)
{
    while (m_calls.size() > heights.calls) {
        m_calls.pop_back();
        m_variables.leaveHandler();
    }
    const ScriptDelimiters delimiters = settings().delimiters;
    m_values.resize(heights.values);
    m_targets.resize(heights.targets);
    m_settings.resize(heights.settings);
    settings().delimiters = delimiters;
    m_loops.resize(heights.loops);
    m_tries.resize(heights.tries);
}

void ScriptMachine::caught(const ScriptError &error)
{
    if (m_tries.empty())
        throw error;
    const Try attempt = m_tries.back();
    restore(attempt.heights);
    m_errorMessage = error.errorDescription();
    m_errorNumber = error.number();
    m_next = attempt.handler;
}

// `error` without a number has the general one.
void ScriptMachine::raise()
{
    const ScriptValue number = pop();
    const ScriptValue message = pop();
    const QString text =
        ScriptCoercion::text(message, settings().delimiters).value_or(u"An error occurred."_s);
    throw ScriptError(text,
                      number.isMissing()
                          ? static_cast<int>(ScriptError::General)
                          : static_cast<int>(ScriptCoercion::to(number, u"integer"_s, {}).as<qint64>()));
}

void ScriptMachine::call(const ScriptInstruction &instruction)
{
    const QString &name = nameOf(instruction.a);
    const auto found = m_code.handlers.constFind(name);
    const QStringList &labels = labelsOf(instruction.b);
    if (found == m_code.handlers.cend())
        throw ScriptError(u"The script doesn’t understand the “%1” message."_s.arg(name),
                          ScriptError::NotUnderstood);
    if (m_calls.size() >= deepestCalls)
        throw ScriptError(u"Stack overflow."_s, -2706);
    QList<ScriptValue> arguments = popSeveral(instruction.c);
    const bool isRun = name == u"run"_s;
    if (isRun)
        arguments = QList<ScriptValue>(found->parameters, ScriptValue::list({}));
    if (arguments.size() != found->parameters ||
        QSet(labels.begin(), labels.end()) != QSet(found->labels.begin(), found->labels.end()))
        throw ScriptError(u"The parameters don’t match those of “%1”."_s.arg(name), -1721);
    const CallFrame frame{m_next, heights()};
    m_calls.push_back(frame);
    m_variables.enterHandler();
    // The target of `tell` is the caller's.
    m_targets.push_back({});
    for (qsizetype index = 0; index < arguments.size(); ++index)
        push(labels.isEmpty() ? arguments.at(index) : arguments.at(labels.indexOf(found->labels.at(index))));
    m_result = {};
    m_next = found->address;
}

void ScriptMachine::returnFromCall()
{
    const ScriptValue value = pop();
    if (m_calls.empty()) {
        m_result = value;
        m_isFinished = true;
        return;
    }
    const CallFrame frame = m_calls.back();
    restore(frame.heights);
    push(value);
    m_next = frame.returnAddress;
}

void ScriptMachine::enterConsidering(const QStringList &attributes)
{
    static const QHash<QString, ScriptIgnored> parts{{u"case"_s, ScriptIgnored::Case},
                                                     {u"diacriticals"_s, ScriptIgnored::Diacriticals},
                                                     {u"hyphens"_s, ScriptIgnored::Hyphens},
                                                     {u"punctuation"_s, ScriptIgnored::Punctuation},
                                                     {u"white space"_s, ScriptIgnored::WhiteSpace}};
    ScriptSettings changed = settings();
    for (const QString &attribute : attributes) {
        const bool isIgnored = attribute.startsWith(u"ignore "_s);
        const QString name = attribute.section(u' ', 1);
        if (parts.contains(name))
            changed.comparison.ignored.setFlag(parts.value(name), isIgnored);
        else if (name == u"numeric strings"_s)
            changed.comparison.isNumeric = !isIgnored;
    }
    m_settings.push_back(changed);
}

void ScriptMachine::setDelimiters(const ScriptValue &value)
{
    ScriptDelimiters delimiters;
    const ScriptValue list = ScriptCoercion::to(value, u"list"_s, {});
    for (const ScriptValue &item : std::as_const(list.items()))
        delimiters.append(ScriptCoercion::to(item, u"text"_s, {}).as<QString>());
    if (delimiters.size() > mostDelimiters)
        throw ScriptError(u"There are too many text item delimiters."_s, ScriptError::TooLarge);
    settings().delimiters = delimiters;
}

void ScriptMachine::perform(const ScriptInstruction &instruction)
{
    ScriptCommand command;
    command.name = nameOf(instruction.a);
    const QStringList &labels = labelsOf(instruction.b);
    const QList<ScriptValue> values = popSeveral(static_cast<int>(labels.size()));
    for (qsizetype index = 0; index < labels.size(); ++index)
        command.parameters.insert(labels.at(index), values.at(index));
    if (instruction.c != 0)
        command.direct = pop();
    if (const std::optional<ScriptValue> value = ScriptAdditions::perform(command, settings())) {
        pushNew(*value);
        return;
    }
    request(command, Answer::Pushed);
}

void ScriptMachine::request(ScriptCommand command, Answer answer)
{
    const bool isToObject = command.direct && command.direct->is<ScriptValue::Object>();
    const auto ofObject = isToObject ? command.direct->object().applicationName() : std::nullopt;
    command.application = ofObject ? ofObject : applicationOfTarget();
    command.target = m_targets.empty() ? ScriptValue() : m_targets.back();
    m_command = std::move(command);
    m_answer = answer;
    m_isWaiting = true;
}

void ScriptMachine::answer(const ScriptValue &value)
{
    m_isWaiting = false;
    switch (m_answer) {
    case Answer::Pushed:
        pushNew(value);
        break;
    case Answer::Ignored:
        break;
    case Answer::ReplacesItem:
        m_values.back().items()[m_item] = value;
        break;
    }
}

void ScriptMachine::fail(const ScriptError &error)
{
    m_isWaiting = false;
    caught(error);
}
