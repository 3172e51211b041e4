// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionDefinition.h"

// The task itself.
namespace TaskActions {

extern const ActionDefinition done; // ends it; handled by the agent loop

} // namespace TaskActions
