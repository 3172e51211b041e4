// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <xcb/xcb.h>

#include <memory>

// A new connection to the X server of $DISPLAY.
struct X11Link
{
    std::shared_ptr<xcb_connection_t> connection;
    int screenNumber = 0;
    bool isXwayland = false;

    // Throws PlatformError if there is no server, or if it doesn't respond within two seconds (a hung server
    // accepts connections but never replies). Blocks. Any thread.
    static X11Link open();
};
