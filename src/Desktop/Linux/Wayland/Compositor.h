// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Wayland/Connection.h"

#include <memory>

// What a compositor offers of what actions need. A plain value.
struct WaylandOffer
{
    enum class Windows { None, Toplevels, Plasma };    // their list, focusing and closing them
    enum class Keys { None, VirtualKeyboard, Plasma }; // sending keys

    Windows windows = Windows::None;
    Keys keys = Keys::None;
    bool pictures = false; // of the screen
    // KWin offers more to a program whose desktop entry asks for it.
    bool isWithheld = false;

    // Whether actions can work; only a screenshot may be impossible.
    bool isComplete() const { return windows != Windows::None && keys != Keys::None; }

    static WaylandOffer of(const WaylandConnection &connection);

    // What the environment's compositor offers; nothing if there is none. Blocks as WaylandConnection does.
    static WaylandOffer ofEnvironment();
};

// A connection to the environment's compositor, or null if there is none. Blocks as WaylandConnection does.
std::unique_ptr<WaylandConnection> connectToCompositor();
