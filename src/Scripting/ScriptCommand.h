// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptValue.h"

#include <QHash>
#include <QString>

#include <optional>

// A command of a script to the world outside it. Besides those that scripts write, there are "get", with the
// object whose value is wanted, and "set", with the parameter "to".
struct ScriptCommand
{
    QString name;                       // in lower case: "display dialog"
    std::optional<QString> application; // the target of `tell`, or the application of the direct parameter
    ScriptValue target;                 // the object that is the target of `tell`; missing outside
    std::optional<ScriptValue> direct;
    QHash<QString, ScriptValue> parameters; // by label

    ScriptValue parameter(const QString &label) const { return parameters.value(label); }
};
