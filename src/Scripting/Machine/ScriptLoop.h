// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptValue.h"

#include <optional>

// The state of a `repeat`, or of the selection of elements with `whose`.
class ScriptLoop
{
public:
    // Throw ScriptError if the values are unsuitable.
    static ScriptLoop times(const ScriptValue &count);
    static ScriptLoop range(const ScriptValue &from, const ScriptValue &to, const ScriptValue &step);
    static ScriptLoop list(const ScriptValue &list);

    // The value of the next round; nothing after the last one. The rounds of a list are its items at the
    // time.
    std::optional<ScriptValue> next();

    // Of the item in this round; null if the loop has no list.
    const ScriptValue::List &items() const { return m_items; }
    qsizetype index() const { return m_index; }

    int variable = -1; // its name's number
    QList<ScriptValue> kept;

    void collect(std::vector<const ScriptValue *> &values) const;

private:
    ScriptValue::List m_items;
    qsizetype m_index = -1;
    ScriptValue m_list; // keeps m_items for `collect`
    double m_next = 0.0;
    double m_last = 0.0;
    double m_step = 1.0;
    bool m_isWhole = true;
};
