// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionDefinition.h"

// Starting and quitting applications.
namespace ApplicationActions {

extern const ActionDefinition openApp;
extern const ActionDefinition focusApp; // a second name of openApp, which the model is not told
extern const ActionDefinition quitApp;

} // namespace ApplicationActions
