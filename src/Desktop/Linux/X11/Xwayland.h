// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <xcb/xcb.h>

// Whether the X server is an Xwayland: it shows the windows of X applications in a Wayland session, and knows
// nothing of the rest of that desktop. Asks the server and waits for it; any thread.
bool isXwayland(xcb_connection_t *connection);
