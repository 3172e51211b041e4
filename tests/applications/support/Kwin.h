// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// KWin on a private desktop, as an administrator uses it. Thread: main.
namespace Kwin {

// Runs a script in KWin. What it passes to the function `tell`, a string, is returned; empty on timeout or
// without the session bus.
QString run(const QString &script);

// Gives this program a desktop entry, and waits until KWin grants it what the entry names. False on timeout.
bool permitThisProgram();

} // namespace Kwin
