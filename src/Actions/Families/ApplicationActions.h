// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionDefinition.h"

// Starting and quitting applications.
namespace ApplicationActions {

extern const ActionDefinition openApp;
extern const ActionDefinition focusApp; // alias of openApp, not in the prompt
extern const ActionDefinition quitApp;

} // namespace ApplicationActions
