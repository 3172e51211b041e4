// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/ScriptHost.h"

#include <QCoroTask>
#include <QString>

#include <chrono>
#include <stop_token>

// Runs scripts in the language that docs/scripts.md describes. Bounded in time, steps and memory; yields to
// the event loop every few milliseconds. Thread: main.
namespace ScriptInterpreter {

// A script, with everything it waits for.
inline constexpr std::chrono::seconds longestRun{120};

// Returns the script's result. Throws ScriptError, also if the script is not understood, takes too long or is
// cancelled. What the script has done by then is not undone. `host` must outlive the task.
QCoro::Task<ScriptValue> run(QString source, ScriptHost &host, std::stop_token cancellation = {},
                             std::chrono::milliseconds timeLimit = longestRun);

} // namespace ScriptInterpreter
