// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionDefinition.h"

// What the screen shows.
namespace ScreenActions {

extern const ActionDefinition screenshot;
extern const ActionDefinition listWindows;

} // namespace ScreenActions
