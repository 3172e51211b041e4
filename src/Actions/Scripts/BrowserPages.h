// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Scripting/ScriptCommand.h"

#include <QCoroTask>

// The web page that a browser shows: `URL of active tab of front window`, `URL of current tab of window 1`,
// `URL of front document`. Thread: main.
namespace BrowserPages {

// Returns nothing for other commands and objects. Throws ScriptError, ActionError or PlatformError.
QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command, Desktop desktop);

} // namespace BrowserPages
