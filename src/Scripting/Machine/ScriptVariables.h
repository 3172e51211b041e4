// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptValue.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <memory>
#include <vector>

// The variables of the script and of the handlers that are running. Those of the script's own statements are
// visible in handlers only if declared with `global` or `property`.
class ScriptVariables
{
public:
    using Place = std::shared_ptr<ScriptValue>;

    ScriptVariables() : m_scopes(1) {}

    void enterHandler() { m_scopes.emplace_back(); }
    void leaveHandler() { m_scopes.pop_back(); }
    std::size_t depth() const { return m_scopes.size(); }

    // Returns null if there is no such variable.
    Place find(const QString &name) const;
    // The same, or a new variable.
    Place place(const QString &name);
    // Variables of the script itself; `find` returns null if there is none.
    Place findOfScript(const QString &name) const { return m_scopes.front().variables.value(name); }

    void declareLocal(const QString &name, const ScriptValue &value = {});
    void declareGlobal(const QString &name);
    // A variable of the script that all handlers see.
    void defineProperty(const QString &name, const ScriptValue &value);

    void collect(std::vector<const ScriptValue *> &values) const;

private:
    struct Scope
    {
        QHash<QString, Place> variables;
        QSet<QString> globals; // names that are the script's
    };

    const Scope &scopeOf(const QString &name) const;

    std::vector<Scope> m_scopes; // the script's own first
    QSet<QString> m_properties;
};
