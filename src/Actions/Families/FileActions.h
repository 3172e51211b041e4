// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionDefinition.h"

// Files and folders.
namespace FileActions {

extern const ActionDefinition createFolder;
extern const ActionDefinition findFiles;
extern const ActionDefinition openPath;
extern const ActionDefinition trash;

} // namespace FileActions
