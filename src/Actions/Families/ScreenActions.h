// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionDefinition.h"

// Screenshots and the list of windows.
namespace ScreenActions {

extern const ActionDefinition screenshot;
extern const ActionDefinition listWindows;

} // namespace ScreenActions
