// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionDefinition.h"

// The controls of the frontmost application.
namespace ControlActions {

extern const ActionDefinition click;
extern const ActionDefinition readUi;

} // namespace ControlActions
