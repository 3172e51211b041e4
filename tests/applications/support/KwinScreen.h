// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/ScreenObserver.h"

// A private desktop with KWin, as scripts in KWin see it, and the user's keyboard there, for which this
// program must be permitted. Thread: main.
namespace KwinScreen {

ScreenObserver &observer();

QList<ScreenWindow> windowsFrontToBack();

} // namespace KwinScreen
