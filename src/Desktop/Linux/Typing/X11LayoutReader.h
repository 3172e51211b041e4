// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Typing/KeyboardLayout.h"
#include "Desktop/Linux/X11/Connection.h"

// What the keyboard device of that identifier types while the group is switched on; as on the server, one
// that its map does not have wraps around. Throws PlatformError when there is no such device. X thread.
KeyboardLayout readLayout(const X11Connection &connection, std::uint16_t device, std::uint8_t group);
