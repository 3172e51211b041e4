// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/ScriptCommand.h"
#include "Scripting/Values/ScriptOperators.h"

// The commands that need nothing outside the script: "count", "offset", "round", … Throw ScriptError.
namespace ScriptAdditions {

// Nothing if the command isn't one of them.
std::optional<ScriptValue> perform(const ScriptCommand &command, const ScriptSettings &settings);

} // namespace ScriptAdditions
