// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionDefinition.h"

// Web pages.
namespace WebActions {

extern const ActionDefinition openUrl;
extern const ActionDefinition webSearch;
extern const ActionDefinition newTab;

} // namespace WebActions
