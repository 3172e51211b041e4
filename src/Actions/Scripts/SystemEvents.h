// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Scripting/ScriptHost.h"

// The application "System Events": keys for the frontmost application, processes and their windows, and
// presses of their controls. Thread: main.
namespace SystemEvents {

// See ScriptHost::perform.
QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command, Desktop desktop);

} // namespace SystemEvents
