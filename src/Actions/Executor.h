// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// Performs actions on the desktop. Stateless. Thread: main. `Families` has one file per family of actions,
// `Operations` their building blocks.
namespace Executor {

// Performs an action on its target and returns the result for the model, one line of English. The caller has
// obtained any approval the policy demands, and handles "done", which is unknown here. Throws ActionError,
// also if the session doesn't permit the action; passes PlatformError on. A failed action's completed effects
// are not undone.
QCoro::Task<QString> run(AgentAction action, ActionTarget target, Desktop desktop);

// The same on the action's current target.
QCoro::Task<QString> run(AgentAction action, Desktop desktop);

// The frontmost application and the open windows, in one line. Never throws: unavailable parts, as on a
// locked screen, are "unknown" or "none".
QCoro::Task<QString> observe(Desktop desktop);

} // namespace Executor
