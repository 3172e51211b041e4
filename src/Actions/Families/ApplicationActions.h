// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// The actions "open_app" (and "focus_app") and "quit_app". Each is carried out on its target and gives the
// result line; `Executor::run` says what may be thrown. A title is what the user sees of it.
namespace ApplicationActions {

QCoro::Task<QString> openApp(AgentAction action, ActionTarget target, Desktop desktop);
QString openAppTitle(const AgentAction &action);
QCoro::Task<QString> quitApp(AgentAction action, ActionTarget target, Desktop desktop);
QString quitAppTitle(const AgentAction &action);

} // namespace ApplicationActions
