// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Values/ScriptValue.h"

#include "Scripting/ScriptError.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Containers whose content waits for its destruction. Null outside an outermost destructor.
using Remains = std::vector<ScriptValue>;
thread_local Remains *pendingRemains = nullptr;

// Destroys the values in a loop, because a chain of nested lists would exhaust the stack.
void dispose(Remains content)
{
    if (pendingRemains) {
        std::move(content.begin(), content.end(), std::back_inserter(*pendingRemains));
        return;
    }
    Remains remains = std::move(content);
    pendingRemains = &remains;
    while (!remains.empty()) {
        const ScriptValue last = std::move(remains.back());
        remains.pop_back();
    }
    pendingRemains = nullptr;
}

bool isContainer(const ScriptValue &value)
{
    return value.is<ScriptValue::List>() || value.is<ScriptValue::Record>();
}

const void *identityOf(const ScriptValue &value)
{
    if (value.is<ScriptValue::List>())
        return value.as<ScriptValue::List>().get();
    return value.is<ScriptValue::Record>() ? value.as<ScriptValue::Record>().get() : nullptr;
}

template <typename Visitor>
void forEachPart(const ScriptValue &value, Visitor visit)
{
    if (value.is<ScriptValue::List>()) {
        for (const ScriptValue &item : std::as_const(value.items()))
            visit(item);
    } else if (value.is<ScriptValue::Record>()) {
        for (const auto &entry : value.entries())
            visit(entry.second);
    }
}

ScriptValue duplicateWithin(const ScriptValue &value, ScriptTraversal &traversal)
{
    traversal.visit();
    if (value.is<ScriptValue::Date>())
        return ScriptValue::date(value.time());
    if (!isContainer(value))
        return value;
    const ScriptTraversal::Level level(traversal);
    if (value.is<ScriptValue::List>()) {
        QList<ScriptValue> items;
        items.reserve(value.items().size());
        for (const ScriptValue &item : std::as_const(value.items()))
            items.append(duplicateWithin(item, traversal));
        return ScriptValue::list(items);
    }
    std::vector<std::pair<QString, ScriptValue>> entries;
    for (const auto &[key, entry] : value.entries())
        entries.emplace_back(key, duplicateWithin(entry, traversal));
    return ScriptValue::record(entries);
}

void requireNoCycleWithin(const void *container, const ScriptValue &value, ScriptTraversal &traversal)
{
    traversal.visit();
    if (!isContainer(value))
        return;
    if (identityOf(value) == container)
        throw ScriptError(u"A list can’t contain itself."_s);
    const ScriptTraversal::Level level(traversal);
    forEachPart(value, [&](const ScriptValue &part) { requireNoCycleWithin(container, part, traversal); });
}

} // namespace

ScriptValue ScriptValue::list(QList<ScriptValue> items)
{
    if (items.size() > ScriptLimits::items)
        throw ScriptError(u"The list is too long."_s, ScriptError::TooLarge);
    auto list = std::make_shared<ScriptList>();
    list->items = std::move(items);
    return list;
}

ScriptValue ScriptValue::record(std::vector<std::pair<QString, ScriptValue>> entries)
{
    auto record = std::make_shared<ScriptRecord>();
    record->entries = std::move(entries);
    return record;
}

ScriptValue ScriptValue::date(const QDateTime &time)
{
    auto date = std::make_shared<ScriptDate>();
    date->time = time;
    return date;
}

QList<ScriptValue> &ScriptValue::items() const
{
    return as<List>()->items;
}

std::vector<std::pair<QString, ScriptValue>> &ScriptValue::entries() const
{
    return as<Record>()->entries;
}

QDateTime &ScriptValue::time() const
{
    return as<Date>()->time;
}

ScriptList::~ScriptList()
{
    if (std::any_of(items.cbegin(), items.cend(), isContainer))
        dispose(Remains(std::make_move_iterator(items.begin()), std::make_move_iterator(items.end())));
}

ScriptRecord::~ScriptRecord()
{
    Remains content;
    for (auto &entry : entries)
        content.push_back(std::move(entry.second));
    dispose(std::move(content));
}

ScriptValue *ScriptRecord::find(const QString &key)
{
    for (auto &[name, value] : entries) {
        if (name.compare(key, Qt::CaseInsensitive) == 0)
            return &value;
    }
    return nullptr;
}

ScriptValue ScriptObject::application(const QString &name)
{
    ScriptObject object;
    object.kind = Kind::Application;
    object.name = name;
    return std::make_shared<const ScriptObject>(object);
}

std::optional<QString> ScriptObject::applicationName() const
{
    const ScriptObject *object = this;
    while (object->container)
        object = object->container.get();
    return object->kind == Kind::Application ? std::optional(object->name) : std::nullopt;
}

int ScriptObject::length() const
{
    int phrases = 0;
    for (const ScriptObject *object = this; object; object = object->container.get())
        ++phrases;
    return phrases;
}

void ScriptTraversal::visit(qsizetype count)
{
    m_visits += count;
    if (m_visits > ScriptLimits::visits)
        throw ScriptError(u"The value is too large for this operation."_s, ScriptError::TooLarge);
}

ScriptTraversal::Level::Level(ScriptTraversal &traversal) : m_traversal(traversal)
{
    if (traversal.m_depth >= ScriptLimits::depth)
        throw ScriptError(u"The value is nested too deeply."_s, ScriptError::TooLarge);
    ++traversal.m_depth;
}

ScriptValue ScriptValues::duplicate(const ScriptValue &value)
{
    ScriptTraversal traversal;
    return duplicateWithin(value, traversal);
}

void ScriptValues::requireNoCycle(const void *container, const ScriptValue &value)
{
    ScriptTraversal traversal;
    requireNoCycleWithin(container, value, traversal);
}

qsizetype ScriptValues::units(const std::vector<const ScriptValue *> &values)
{
    std::vector<const ScriptValue *> waiting = values;
    QSet<const void *> seen;
    qsizetype sum = 0;
    while (!waiting.empty()) {
        const ScriptValue *value = waiting.back();
        waiting.pop_back();
        sum += value->is<QString>() ? 1 + value->as<QString>().size() : 1;
        const void *identity = identityOf(*value);
        if (!identity || seen.contains(identity))
            continue;
        seen.insert(identity);
        forEachPart(*value, [&waiting](const ScriptValue &part) { waiting.push_back(&part); });
    }
    return sum;
}

ScriptValue ScriptValues::dereferenced(const ScriptValue &value)
{
    if (!value.is<ScriptValue::Reference>())
        return value;
    const ScriptReference &reference = *value.as<ScriptValue::Reference>();
    if (reference.variable)
        return *reference.variable;
    if (reference.index >= reference.list->items.size())
        throw ScriptError(u"Can’t get the item, because the list is shorter now."_s,
                          ScriptError::NoSuchObject);
    return reference.list->items.at(reference.index);
}
