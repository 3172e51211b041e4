// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionDefinition.h"

// Keys and typed text.
namespace KeyboardActions {

extern const ActionDefinition typeText;
extern const ActionDefinition pressKey;

} // namespace KeyboardActions
