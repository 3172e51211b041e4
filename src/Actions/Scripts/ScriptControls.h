// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Scripting/Values/ScriptValue.h"

#include <QCoroTask>

// Presses the controls that scripts name: `button "OK" of window 1 of process "Mail"`. Thread: main.
namespace ScriptControls {

// Finds the control in its application and presses it. Throws ScriptError or ActionError if there is none.
// Containers that are named must have that name; those with a number, other than windows, aren't checked.
QCoro::Task<void> press(ScriptValue::Object control, Desktop desktop);

} // namespace ScriptControls
