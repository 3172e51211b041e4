// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

// The device that keys leave through when they are sent with the X server's test extension. It stands beside
// the physical keyboards and has a map of its own. What applications see is a "master" keyboard, which has
// none: whenever a key comes from another device than the one before, the server gives it that device's map.
// Modifiers, locks and the group (language) that is switched on, however, are the master's.

// The identifier of that device behind the master keyboard which this connection's keys go to. Throws
// PlatformError when the server has none. X thread.
std::uint16_t findXtestKeyboard(X11Connection &connection);

// Throws PlatformError.
[[noreturn]] void failWithoutKeyboard();
