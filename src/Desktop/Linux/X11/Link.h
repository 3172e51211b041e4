// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <xcb/xcb.h>

#include <memory>

// A connection to the X server that $DISPLAY names, fresh.
struct X11Link
{
    std::shared_ptr<xcb_connection_t> connection;
    int screenNumber = 0;
    bool isXwayland = false;

    // Throws PlatformError when there is no server, or when it has not answered after two seconds: one that
    // hangs takes connections without end and never says a word. Any thread, which waits meanwhile.
    static X11Link open();
};
