// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Machine/ScriptCode.h"

// Appends instructions and the tables they refer to.
class ScriptCodeWriter
{
public:
    // Returns the instruction's address.
    int add(ScriptOpcode opcode, int a = 0, int b = 0, int c = 0);
    int addNamed(ScriptOpcode opcode, const QString &name, int b = 0, int c = 0);
    void push(const ScriptValue &constant);

    int name(const QString &text);
    int labels(const QStringList &labels);
    int here() const { return static_cast<int>(m_code.instructions.size()); }

    // Has the jump at this address lead here.
    void land(int address);
    ScriptInstruction &at(int address) { return m_code.instructions.at(static_cast<std::size_t>(address)); }

    void addHandler(const QString &name, const ScriptHandlerEntry &entry)
    {
        m_code.handlers.insert(name, entry);
    }
    bool hasHandler(const QString &name) const { return m_code.handlers.contains(name); }
    ScriptCode take() { return std::move(m_code); }

private:
    ScriptCode m_code;
    QHash<QString, int> m_names;
};
