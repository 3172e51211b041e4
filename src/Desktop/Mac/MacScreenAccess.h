// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/Applications/MacWindowList.h"

#include <QCoroTask>

// The Screen Recording permission. Main thread.
namespace MacScreenAccess {

// Asks nobody.
QCoro::Task<bool> isGranted(MacWindowList &windowList);

// Has the system ask the user, and does not wait for the answer.
void request();

} // namespace MacScreenAccess
