// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// The actions "click" and "read_ui". Each is carried out on its target and gives the result line;
// `Executor::run` says what may be thrown. A title is what the user sees of it.
namespace ControlActions {

QCoro::Task<QString> click(AgentAction action, ActionTarget target, Desktop desktop);
QString clickTitle(const AgentAction &action);
QCoro::Task<QString> readUI(AgentAction action, ActionTarget target, Desktop desktop);

} // namespace ControlActions
