// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// The actions "open_url", "web_search" and "new_tab". Each is carried out on its target and gives the result
// line; `Executor::run` says what may be thrown. A title is what the user sees of it.
namespace WebActions {

QCoro::Task<QString> openURL(AgentAction action, ActionTarget target, Desktop desktop);
QString openURLTitle(const AgentAction &action);
QCoro::Task<QString> webSearch(AgentAction action, ActionTarget target, Desktop desktop);
QString webSearchTitle(const AgentAction &action);
QCoro::Task<QString> newTab(AgentAction action, ActionTarget target, Desktop desktop);

} // namespace WebActions
