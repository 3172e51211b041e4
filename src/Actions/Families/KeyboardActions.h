// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// The actions "type_text" and "press_key". Each is carried out on its target and gives the result line;
// `Executor::run` says what may be thrown. A title is what the user sees of it.
namespace KeyboardActions {

QCoro::Task<QString> typeText(AgentAction action, ActionTarget target, Desktop desktop);
QString typeTextTitle(const AgentAction &action);
QCoro::Task<QString> pressKey(AgentAction action, ActionTarget target, Desktop desktop);
QString pressKeyTitle(const AgentAction &action);

} // namespace KeyboardActions
