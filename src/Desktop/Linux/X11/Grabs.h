// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

// Input grabs of other clients. Throws PlatformError if the X server is lost. Thread: X.
namespace X11Grabs {

// Whether another client has grabbed the keyboard, so that it receives all keys whatever window is active.
bool isKeyboardTaken(const X11Connection &connection);

// Whether a screen locker is active. X11 has no property for this, but a locker grabs the keyboard and the
// pointer and covers all monitors (except possibly their edges) with override-redirect windows above all
// application windows. An open menu covers less; a full-screen game or video is a managed window.
bool isScreenLocked(const X11Connection &connection);

} // namespace X11Grabs
