// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/ScreenObserver.h"

// The screen of a private desktop with labwc, which reports neither processes nor positions: a window's
// process is the oldest one whose program is named like the window's application. Thread: main.
namespace LabwcScreen {

ScreenObserver &observer();

} // namespace LabwcScreen
