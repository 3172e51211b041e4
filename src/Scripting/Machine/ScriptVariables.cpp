// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Machine/ScriptVariables.h"

const ScriptVariables::Scope &ScriptVariables::scopeOf(const QString &name) const
{
    const Scope &innermost = m_scopes.back();
    const bool isScripts = innermost.globals.contains(name) ||
                           (m_properties.contains(name) && !innermost.variables.contains(name));
    return isScripts ? m_scopes.front() : innermost;
}

ScriptVariables::Place ScriptVariables::find(const QString &name) const
{
    return scopeOf(name).variables.value(name);
}

ScriptVariables::Place ScriptVariables::place(const QString &name)
{
    Place &place = const_cast<Scope &>(scopeOf(name)).variables[name];
    if (!place)
        place = std::make_shared<ScriptValue>();
    return place;
}

void ScriptVariables::declareLocal(const QString &name, const ScriptValue &value)
{
    m_scopes.back().variables.insert(name, std::make_shared<ScriptValue>(value));
}

void ScriptVariables::declareGlobal(const QString &name)
{
    if (m_scopes.size() == 1)
        m_properties.insert(name);
    m_scopes.back().globals.insert(name);
}

void ScriptVariables::defineProperty(const QString &name, const ScriptValue &value)
{
    m_properties.insert(name);
    m_scopes.front().variables.insert(name, std::make_shared<ScriptValue>(value));
}

void ScriptVariables::collect(std::vector<const ScriptValue *> &values) const
{
    for (const Scope &scope : m_scopes) {
        for (const Place &place : scope.variables)
            values.push_back(place.get());
    }
}
