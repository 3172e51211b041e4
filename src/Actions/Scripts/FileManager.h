// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Scripting/ScriptHost.h"

// The application "Finder": files and folders. Works on the disk itself, whichever file manager is installed.
// Thread: main.
namespace FileManager {

// See ScriptHost::perform.
QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command, Desktop desktop);

} // namespace FileManager
