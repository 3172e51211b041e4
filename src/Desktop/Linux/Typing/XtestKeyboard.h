// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

// XTEST sends keys through a slave keyboard of its own, beside the physical ones, with its own keymap.
// Applications see the master keyboard, which takes over the keymap of whichever slave device sent the latest
// key. Modifiers, locks and the active group (language), however, belong to the master.

// Returns the device identifier of the XTEST keyboard attached to this connection's master keyboard. Throws
// PlatformError if there is none. Thread: X.
std::uint16_t findXtestKeyboard(X11Connection &connection);

// Throws PlatformError.
[[noreturn]] void failWithoutKeyboard();
