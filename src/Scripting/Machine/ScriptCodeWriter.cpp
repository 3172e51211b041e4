// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Machine/ScriptCodeWriter.h"

int ScriptCodeWriter::add(ScriptOpcode opcode, int a, int b, int c)
{
    m_code.instructions.push_back({opcode, a, b, c});
    return here() - 1;
}

int ScriptCodeWriter::addNamed(ScriptOpcode opcode, const QString &text, int b, int c)
{
    return add(opcode, name(text), b, c);
}

void ScriptCodeWriter::push(const ScriptValue &constant)
{
    m_code.constants.push_back(constant);
    add(ScriptOpcode::Push, static_cast<int>(m_code.constants.size()) - 1);
}

int ScriptCodeWriter::name(const QString &text)
{
    const auto known = m_names.constFind(text);
    if (known != m_names.cend())
        return *known;
    m_code.names.append(text);
    return m_names[text] = static_cast<int>(m_code.names.size()) - 1;
}

int ScriptCodeWriter::labels(const QStringList &labels)
{
    m_code.labels.push_back(labels);
    return static_cast<int>(m_code.labels.size()) - 1;
}

void ScriptCodeWriter::land(int address)
{
    ScriptInstruction &jump = at(address);
    const bool isInB = jump.opcode == ScriptOpcode::NextRound || jump.opcode == ScriptOpcode::NextCandidate;
    (isInB ? jump.b : jump.a) = here();
}
