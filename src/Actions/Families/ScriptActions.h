// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionDefinition.h"

// Scripts that the model writes.
namespace ScriptActions {

extern const ActionDefinition appleScript;

} // namespace ScriptActions
