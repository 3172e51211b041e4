// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionDefinition.h"

// Scripts written by the model.
namespace ScriptActions {

extern const ActionDefinition appleScript;

} // namespace ScriptActions
