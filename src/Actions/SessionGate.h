// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// The gate before every action: whether the user's session allows it. Main thread.
namespace SessionGate {

// Throws ActionError while the screen is locked.
QCoro::Task<void> requireUnlocked(Desktop desktop);

// Throws ActionError while the screen is locked; and where the session's windows, keys and screen are out of
// reach, for every action that does not work on files alone.
QCoro::Task<void> requireSessionFor(AgentAction action, Desktop desktop);

} // namespace SessionGate
