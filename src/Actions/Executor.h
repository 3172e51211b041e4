// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// Carries out actions on the desktop. Stateless; main thread. `Families` has one file for each family of
// actions, `Operations` what they are made of.
namespace Executor {

// Carries out one action on its target, already approved where the policy asks for that, and gives its result
// in one line of English for the model. Throws ActionError for what it detects itself, beginning with a
// session that does not allow the action, and passes PlatformError on. "done" is the caller's business and
// unknown here. What was done before a failure stays done.
QCoro::Task<QString> run(AgentAction action, ActionTarget target, Desktop desktop);

// The same on the target that it has now.
QCoro::Task<QString> run(AgentAction action, Desktop desktop);

// Which application is in front and which windows are open, in one line. Never throws: what cannot be found
// out, as on a locked screen, is "unknown" or "none".
QCoro::Task<QString> observe(Desktop desktop);

} // namespace Executor
