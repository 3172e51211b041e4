// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// The actions "applescript". Each is carried out on its target and gives the result line; `Executor::run`
// says what may be thrown. A title is what the user sees of it.
namespace ScriptActions {

QCoro::Task<QString> appleScript(AgentAction action, ActionTarget target, Desktop desktop);

} // namespace ScriptActions
