// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/ScreenObserver.h"

#include <QStringList>

// The screen of a private desktop with sway. Thread: main.
namespace SwayScreen {

ScreenObserver &observer();

// Has sway execute a command, as "swaymsg" does.
void command(const QStringList &words);

} // namespace SwayScreen
