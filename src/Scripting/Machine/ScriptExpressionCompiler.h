// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Language/ScriptSyntax.h"
#include "Scripting/Machine/ScriptCodeWriter.h"

// Translates expressions and assignments. Throws ScriptError.
class ScriptExpressionCompiler
{
public:
    explicit ScriptExpressionCompiler(ScriptCodeWriter &writer) : m_writer(writer) {}

    // Pushes the value.
    void value(const ScriptNode &node);
    // Pushes the value, or the description of an object, which isn't asked for its value.
    void object(const ScriptNode &node);
    // Pops a value and assigns it.
    void store(const ScriptNode &target);

private:
    enum class Lookup { VariableFirst, PropertyFirst };

    void logical(const ScriptNode &node, ScriptOpcode jump);
    void sequence(const ScriptNode &node);
    void property(const ScriptNode &node);
    void element(const ScriptNode &node, ScriptOpcode opcode);
    void elementOf(const ScriptNode &node, ScriptOpcode opcode);
    void container(const ScriptNode &node);
    void filter(const ScriptNode &node);
    void reference(const ScriptNode &node);
    void call(const ScriptNode &node);
    void command(const ScriptNode &node);
    void storeProperty(const ScriptNode &target);
    void storeParts(const ScriptNode &target);

    ScriptCodeWriter &m_writer;
    Lookup m_lookup = Lookup::VariableFirst;
};
