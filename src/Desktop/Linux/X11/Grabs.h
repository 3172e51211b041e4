// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

// What other programs have taken for themselves. X thread only; everything throws PlatformError when the X
// server is gone.
namespace X11Grabs {

// Whether another client has grabbed the keyboard: all keys go there, whatever is active.
bool isKeyboardTaken(const X11Connection &connection);

// Whether the screen is locked, by whatever means. There is no property that says so, but a locker does three
// things: it grabs the keyboard, it grabs the pointer, and it covers all monitors (but perhaps their edges)
// with windows that no window manager has to do with, above those of all applications. An open menu covers
// less, and a game or a film that fills the screen is a window like others.
bool isScreenLocked(const X11Connection &connection);

} // namespace X11Grabs
