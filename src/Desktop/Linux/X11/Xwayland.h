// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <xcb/xcb.h>

// Whether the X server is Xwayland, which hosts X clients in a Wayland session and sees no other windows.
// Blocks for a round trip. Any thread.
bool isXwayland(xcb_connection_t *connection);
