// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Scripting/ScriptHost.h"

// Carries out `display dialog`, `display alert` and `choose from list`.
namespace ScriptDialogs {

// Like ScriptHost::perform.
QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command, Desktop desktop);

} // namespace ScriptDialogs
