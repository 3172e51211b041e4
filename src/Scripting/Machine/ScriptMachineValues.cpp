// SPDX-License-Identifier: Apache-2.0
// The instructions of ScriptMachine on variables, values and objects.
#include "Scripting/Machine/ScriptMachine.h"

#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptElements.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

using Op = ScriptOpcode;
using Kind = ScriptObject::Kind;

namespace {

bool isObject(const ScriptValue &value)
{
    return value.is<ScriptValue::Object>();
}

bool isOfScript(const ScriptValue &value)
{
    return isObject(value) && (value.object().kind == Kind::Script || value.object().kind == Kind::Language);
}

bool areObjects(const ScriptValue &value)
{
    return value.is<ScriptValue::List>() && !value.items().isEmpty() &&
           std::all_of(value.items().cbegin(), value.items().cend(), isObject);
}

// Whether the host has to be asked for the object's value.
bool isOpen(const ScriptValue &value)
{
    if (!isObject(value))
        return false;
    const Kind kind = value.object().kind;
    return !value.object().isValue && (kind == Kind::Property || kind == Kind::Element);
}

ScriptValue propertyOfObject(const ScriptValue &container, const QString &name)
{
    ScriptObject object;
    object.kind = Kind::Property;
    object.name = name;
    object.container = container.as<ScriptValue::Object>();
    if (object.length() > ScriptLimits::depth)
        throw ScriptError(u"The value is nested too deeply."_s, ScriptError::TooLarge);
    return std::make_shared<const ScriptObject>(object);
}

[[noreturn]] void failUndefined(const QString &name)
{
    throw ScriptError(u"The variable %1 is not defined."_s.arg(name), ScriptError::UndefinedVariable);
}

// `character id 65`, `string id {72, 105}`
ScriptValue textOfCodePoints(const ScriptValue &key)
{
    const ScriptValue list = ScriptCoercion::to(key, u"list"_s, {});
    QString text;
    for (const ScriptValue &item : std::as_const(list.items())) {
        const qint64 code = ScriptCoercion::to(item, u"integer"_s, {}).as<qint64>();
        const bool isCharacter = code >= 0 && code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF);
        if (!isCharacter)
            throw ScriptError(u"There is no character %1."_s.arg(code));
        text += QString::fromUcs4(std::array{static_cast<char32_t>(code)}.data(), 1);
    }
    return text;
}

// Elements that need no container: files, dates and characters by number.
std::optional<ScriptValue> freeElement(const ScriptObject &selection)
{
    const bool isNamed = selection.form == ScriptObject::Form::Index;
    static const QStringList characters{u"character"_s, u"string"_s, u"text"_s, u"unicode text"_s};
    static const QStringList files{u"file"_s, u"folder"_s, u"disk"_s};
    if (selection.form == ScriptObject::Form::Identifier && characters.contains(selection.name))
        return textOfCodePoints(selection.key);
    if (isNamed && selection.name == u"date")
        return ScriptCoercion::to(selection.key, u"date"_s, {});
    if (isNamed && (selection.name == u"alias" || selection.name == u"posix file"))
        return ScriptCoercion::to(selection.key, u"file"_s, {});
    if (isNamed && files.contains(selection.name) && !selection.key.isNumber())
        return ScriptCoercion::to(selection.key, u"file"_s, {});
    return std::nullopt;
}

} // namespace

void ScriptMachine::executeValue(const ScriptInstruction &instruction)
{
    switch (instruction.opcode) {
    case Op::MakeApplication:
        push(ScriptObject::application(ScriptCoercion::to(pop(), u"text"_s, {}).as<QString>()));
        break;
    case Op::MakeList:
        pushNew(ScriptValue::list(popSeveral(instruction.a)));
        break;
    case Op::MakeRecord:
        makeRecord(labelsOf(instruction.a));
        break;
    case Op::MakeReference:
        makeReference(nameOf(instruction.a));
        break;
    case Op::MakeItemReference: {
        const ScriptValue index = pop();
        const ScriptValue list = ScriptCoercion::to(pop(), u"list"_s, {});
        const qsizetype position = ScriptElements::position(index, list.items().size(), u"item"_s, list);
        push(std::make_shared<const ScriptReference>(
            ScriptReference{nullptr, list.as<ScriptValue::List>(), position}));
        break;
    }
    case Op::MarkValue: {
        if (!isOpen(m_values.back()))
            break;
        ScriptObject object = m_values.back().object();
        object.isValue = true;
        m_values.back() = std::make_shared<const ScriptObject>(object);
        break;
    }
    case Op::Spread:
        spread(instruction.a);
        break;
    case Op::Binary: {
        const ScriptValue right = pop();
        const ScriptValue left = pop();
        pushNew(ScriptOperators::apply(static_cast<ScriptOperator>(instruction.a), left, right, settings()));
        break;
    }
    case Op::Not:
        push(!ScriptOperators::truth(pop()));
        break;
    case Op::Negate:
        push(ScriptOperators::negated(pop()));
        break;
    case Op::Coerce: {
        const ScriptValue wanted = pop();
        const QString name = ScriptCoercion::text(wanted, {}).value_or(QString()).toLower();
        pushNew(ScriptCoercion::to(pop(), name, settings().delimiters));
        break;
    }
    case Op::GetProperty:
        pushNew(propertyOf(pop(), nameOf(instruction.a)));
        break;
    case Op::GetElement:
        getElement(instruction);
        break;
    case Op::MakeSelection:
        push(std::make_shared<const ScriptObject>(selection(instruction)));
        break;
    case Op::Resolve:
        resolve();
        break;
    case Op::SetProperty: {
        const ScriptValue container = pop();
        setProperty(container, nameOf(instruction.a), pop());
        break;
    }
    default: {
        const ScriptObject chosen = selection(instruction);
        const ScriptValue container = pop();
        if (!isObject(container)) {
            ScriptElements::setElement(container, chosen, pop());
            break;
        }
        ScriptObject object = chosen;
        object.container = container.as<ScriptValue::Object>();
        setOutside(std::make_shared<const ScriptObject>(object), pop());
        break;
    }
    }
}

// Outside `tell`, the target is the script.
ScriptValue ScriptMachine::target() const
{
    if (!m_targets.empty() && !m_targets.back().isMissing())
        return m_targets.back();
    return std::make_shared<const ScriptObject>(ScriptObject{});
}

std::optional<QString> ScriptMachine::applicationOfTarget() const
{
    for (auto target = m_targets.rbegin(); target != m_targets.rend() && !target->isMissing(); ++target) {
        const auto name = isObject(*target) ? target->object().applicationName() : std::nullopt;
        if (name)
            return name;
    }
    return std::nullopt;
}

void ScriptMachine::load(const QString &name, bool isPropertyFirst)
{
    const ScriptVariables::Place place = m_variables.find(name);
    const ScriptValue owner = target();
    const bool isVariable = place && !(isPropertyFirst && !isOfScript(owner));
    if (isVariable)
        push(ScriptValues::dereferenced(*place));
    else if (!isOfScript(owner) || name == u"text item delimiters")
        push(propertyOf(owner, name));
    else
        failUndefined(name);
}

void ScriptMachine::store(const QString &name, const ScriptValue &value)
{
    *m_variables.place(name) = value;
    ++m_produced;
}

void ScriptMachine::storeTerm(const QString &name, const ScriptValue &value)
{
    const ScriptValue owner = target();
    const bool isVariable = isOfScript(owner) || m_variables.find(name);
    if (name == u"text item delimiters")
        setDelimiters(value);
    else if (isVariable)
        store(name, value);
    else
        setProperty(owner, name, value);
}

// The variable of a loop refers to the item of the list.
void ScriptMachine::storeContents(const QString &name, const ScriptValue &value)
{
    const ScriptVariables::Place place = m_variables.find(name);
    if (!place)
        failUndefined(name);
    const ScriptValue held = *place;
    if (held.is<ScriptValue::Reference>()) {
        const ScriptReference &reference = *held.as<ScriptValue::Reference>();
        if (reference.variable) {
            *reference.variable = value;
            return;
        }
        ScriptObject item;
        item.kind = Kind::Element;
        item.name = u"item"_s;
        item.form = ScriptObject::Form::Index;
        item.key = qint64(reference.index + 1);
        ScriptElements::setElement(reference.list, item, value);
        return;
    }
    *place = value;
    const auto loop = std::find_if(m_loops.rbegin(), m_loops.rend(), [&](const ScriptLoop &candidate) {
        return candidate.items() && candidate.variable >= 0 && nameOf(candidate.variable) == name;
    });
    if (loop != m_loops.rend() && loop->index() < loop->items()->items.size()) {
        ScriptValues::requireNoCycle(loop->items().get(), value);
        loop->items()->items[loop->index()] = value;
    }
}

void ScriptMachine::makeReference(const QString &name)
{
    const ScriptVariables::Place place = m_variables.find(name);
    if (!place) {
        load(name, false);
        return;
    }
    const bool isReference = place->is<ScriptValue::Reference>();
    push(isReference
             ? *place
             : ScriptValue(std::make_shared<const ScriptReference>(ScriptReference{place, nullptr, 0})));
}

void ScriptMachine::makeRecord(const QStringList &labels)
{
    const QList<ScriptValue> values = popSeveral(static_cast<int>(labels.size()));
    std::vector<std::pair<QString, ScriptValue>> entries;
    for (qsizetype index = 0; index < labels.size(); ++index)
        entries.emplace_back(labels.at(index), values.at(index));
    pushNew(ScriptValue::record(std::move(entries)));
}

void ScriptMachine::spread(int count)
{
    const ScriptValue value = pop();
    const ScriptValue list = ScriptCoercion::to(value, u"list"_s, {});
    if (list.items().size() < count)
        throw ScriptError(
            u"Can’t get item %1 of %2."_s.arg(list.items().size() + 1).arg(ScriptCoercion::source(value)),
            ScriptError::NoSuchObject);
    for (int index = count - 1; index >= 0; --index)
        push(list.items().at(index));
}

ScriptObject ScriptMachine::selection(const ScriptInstruction &instruction)
{
    ScriptObject object;
    object.kind = Kind::Element;
    object.name = nameOf(instruction.a);
    object.form = static_cast<ScriptObject::Form>(instruction.b);
    if (instruction.c > 1)
        object.lastKey = pop();
    if (instruction.c > 0)
        object.key = pop();
    return object;
}

ScriptValue ScriptMachine::propertyOf(const ScriptValue &container, const QString &name)
{
    if (name == u"text item delimiters" && isObject(container)) {
        QList<ScriptValue> items;
        for (const QString &delimiter : settings().delimiters)
            items.append(delimiter);
        return items.size() == 1 ? items.first() : ScriptValue::list(items);
    }
    if (isOfScript(container)) {
        const ScriptVariables::Place place = m_variables.findOfScript(name);
        if (place)
            return ScriptValues::dereferenced(*place);
        if (name == u"class")
            return ScriptClass{u"script"_s};
        throw ScriptError(u"Can’t get %1."_s.arg(name), ScriptError::NoSuchObject);
    }
    const bool isOwn = name == u"class" || name == u"contents";
    if (isObject(container) && !isOwn)
        return propertyOfObject(container, name);
    if (const std::optional<ScriptValue> value = ScriptElements::property(container, name))
        return *value;
    if (!areObjects(container))
        throw ScriptError(u"Can’t get %1 of %2."_s.arg(name, ScriptCoercion::source(container)),
                          ScriptError::NoSuchObject);
    QList<ScriptValue> properties;
    for (const ScriptValue &object : std::as_const(container.items()))
        properties.append(propertyOfObject(object, name));
    return ScriptValue::list(properties);
}

void ScriptMachine::setProperty(const ScriptValue &container, const QString &name, const ScriptValue &value)
{
    if (name == u"text item delimiters" && isObject(container))
        setDelimiters(value);
    else if (isOfScript(container))
        m_variables.defineProperty(name, value);
    else if (isObject(container))
        setOutside(propertyOfObject(container, name), value);
    else
        ScriptElements::setProperty(container, name, value);
    ++m_produced;
}

void ScriptMachine::setOutside(const ScriptValue &object, const ScriptValue &value)
{
    ScriptCommand command;
    command.name = u"set"_s;
    command.direct = object;
    command.parameters.insert(u"to"_s, value);
    request(command, Answer::Ignored);
}

void ScriptMachine::getElement(const ScriptInstruction &instruction)
{
    ScriptObject chosen = selection(instruction);
    const ScriptValue container = pop();
    const bool isOutside = isObject(container) && !isOfScript(container);
    const bool isAlwaysFree = chosen.name == u"date" || chosen.name == u"alias" ||
                              chosen.name == u"posix file" || chosen.form == ScriptObject::Form::Identifier;
    if (!isOutside || isAlwaysFree) {
        const std::optional<ScriptValue> free = isObject(container) ? freeElement(chosen) : std::nullopt;
        if (free) {
            push(*free);
            return;
        }
    }
    if (!isObject(container)) {
        pushNew(ScriptElements::element(container, chosen, settings().delimiters));
        return;
    }
    if (!isOutside)
        throw ScriptError(
            u"Can’t get %1."_s.arg(ScriptCoercion::source(std::make_shared<const ScriptObject>(chosen))),
            ScriptError::NoSuchObject);
    chosen.container = container.as<ScriptValue::Object>();
    if (chosen.length() > ScriptLimits::depth)
        throw ScriptError(u"The value is nested too deeply."_s, ScriptError::TooLarge);
    push(std::make_shared<const ScriptObject>(chosen));
}

// Asks for one object at a time; a list is complete when this instruction finds no open one.
void ScriptMachine::resolve()
{
    const ScriptValue value = m_values.back();
    if (isOpen(value)) {
        pop();
        ScriptCommand command;
        command.name = u"get"_s;
        command.direct = value;
        request(command, Answer::Pushed);
        return;
    }
    if (!areObjects(value))
        return;
    const QList<ScriptValue> &items = value.items();
    const auto open = std::find_if(items.cbegin(), items.cend(), isOpen);
    if (open == items.cend())
        return;
    m_item = open - items.cbegin();
    --m_next;
    ScriptCommand command;
    command.name = u"get"_s;
    command.direct = *open;
    request(command, Answer::ReplacesItem);
}
