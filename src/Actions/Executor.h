// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionError.h"
#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// Carries out actions on the desktop. No state of its own; main thread. What is behind it stands in a file for
// each family of actions, in Families, and for each kind of operation, in Operations.
namespace Executor {

// Carries out one action on the target that was found for it, already approved where the policy asks for
// that, and gives its result in one line of English for the model. Throws ActionError for what it detects
// itself, which begins with a session that does not allow the action, and passes on PlatformError. "done" is
// the caller's business and unknown here. What was done before a failure stays done.
QCoro::Task<QString> run(AgentAction action, ActionTarget target, Desktop desktop);

// The same on the target that it has now.
QCoro::Task<QString> run(AgentAction action, Desktop desktop);

// Which application is in front and which windows are open, in one line. Never throws: what cannot be found
// out, as on a locked screen, is "unknown" or "none".
QCoro::Task<QString> observe(Desktop desktop);

// Whether the action works on whatever application is frontmost when it is carried out, so that the focus
// has to be where it was when the action was chosen.
bool actsOnFrontmostApplication(const AgentAction &action);

// Gives the focus back to the application that was frontmost when a step was assessed: the user may have
// approved it from another window. Throws ActionError when that application is no longer open, or the screen
// is locked.
QCoro::Task<void> returnTo(RunningApplication application, Desktop desktop);

} // namespace Executor
