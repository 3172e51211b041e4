// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/Applications/MacWindowList.h"

#include <QCoroTask>

// The Screen Recording permission. Thread: main.
namespace MacScreenAccess {

// Never prompts the user.
QCoro::Task<bool> isGranted(MacWindowList &windowList);

// Makes the system prompt the user; doesn't wait for the answer.
void request();

} // namespace MacScreenAccess
