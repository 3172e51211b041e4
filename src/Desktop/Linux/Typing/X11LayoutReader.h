// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Typing/KeyboardLayout.h"
#include "Desktop/Linux/X11/Connection.h"

// Reads the layout of a keyboard device in this group; as on the server, an out-of-range group wraps around.
// Throws PlatformError if there is no such device. Thread: X.
KeyboardLayout readLayout(const X11Connection &connection, std::uint16_t device, std::uint8_t group);
