// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// Checks whether the user's session permits an action. Thread: main.
namespace SessionGate {

// Throws ActionError while the screen is locked.
QCoro::Task<void> requireUnlocked(Desktop desktop);

// Throws ActionError if the screen is locked, or if the session's windows, keys and screen are inaccessible
// and the action needs more than files.
QCoro::Task<void> requireSessionFor(AgentAction action, Desktop desktop);

} // namespace SessionGate
