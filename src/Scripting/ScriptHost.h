// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/ScriptCommand.h"

#include <QCoroTask>

#include <optional>

// Carries out what a script says to applications, and the standard additions that need the desktop. Thread:
// main.
class ScriptHost
{
public:
    virtual ~ScriptHost() = default;

    // Returns nothing if no command or object of this kind is known. A command without a result returns a
    // missing value. Throws ScriptError, or another LocalizedError, whose sentence becomes the script's
    // error.
    virtual QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command) = 0;
};
