// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Machine/ScriptLoop.h"

#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptCoercion.h"
#include "Scripting/Values/ScriptNumbers.h"

using namespace Qt::StringLiterals;

namespace {

ScriptValue number(const ScriptValue &value)
{
    return ScriptCoercion::to(value, u"number"_s, {});
}

} // namespace

ScriptLoop ScriptLoop::times(const ScriptValue &count)
{
    return range(qint64(1), ScriptCoercion::to(count, u"integer"_s, {}), qint64(1));
}

ScriptLoop ScriptLoop::range(const ScriptValue &from, const ScriptValue &to, const ScriptValue &step)
{
    const ScriptValue first = number(from);
    const ScriptValue increment = number(step);
    ScriptLoop loop;
    loop.m_next = first.real();
    loop.m_last = number(to).real();
    loop.m_step = increment.real();
    loop.m_isWhole = first.is<qint64>() && increment.is<qint64>();
    if (loop.m_step == 0.0)
        throw ScriptError(u"A “repeat” can’t go on by zero."_s);
    return loop;
}

// Other values than lists stand for a list of one item.
ScriptLoop ScriptLoop::list(const ScriptValue &list)
{
    ScriptLoop loop;
    loop.m_list = ScriptCoercion::to(list, u"list"_s, {});
    loop.m_items = loop.m_list.as<ScriptValue::List>();
    return loop;
}

std::optional<ScriptValue> ScriptLoop::next()
{
    if (m_items) {
        ++m_index;
        return m_index < m_items->items.size() ? std::optional(m_items->items.at(m_index)) : std::nullopt;
    }
    const bool isOver = m_step > 0.0 ? m_next > m_last : m_next < m_last;
    if (isOver)
        return std::nullopt;
    const double current = m_next;
    m_next += m_step;
    return ScriptNumbers::fromCalculation(current, m_isWhole);
}

void ScriptLoop::collect(std::vector<const ScriptValue *> &values) const
{
    values.push_back(&m_list);
    for (const ScriptValue &value : kept)
        values.push_back(&value);
}
