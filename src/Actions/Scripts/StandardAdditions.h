// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Scripting/ScriptHost.h"

// The commands that belong to no application: dates, well-known folders, web addresses; and those that are
// refused, such as shell commands. Thread: main.
namespace StandardAdditions {

// See ScriptHost::perform.
QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command, Desktop desktop);

} // namespace StandardAdditions
