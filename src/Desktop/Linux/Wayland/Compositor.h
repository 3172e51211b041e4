// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Wayland/Connection.h"

#include <memory>

// What a compositor offers of what actions need. A plain value.
struct WaylandOffer
{
    bool windows = false;  // their list, focusing and closing them
    bool keys = false;     // sending keys
    bool pictures = false; // of the screen

    bool isComplete() const { return windows && keys && pictures; }

    static WaylandOffer of(const WaylandConnection &connection);

    // What the environment's compositor offers; nothing if there is none. Blocks as WaylandConnection does.
    static WaylandOffer ofEnvironment();
};

// A connection to the environment's compositor if it offers everything that actions need; otherwise null.
// Blocks as WaylandConnection does.
std::unique_ptr<WaylandConnection> connectToCompleteCompositor();
