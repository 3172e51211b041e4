// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/ScreenObserver.h"

#include <QSet>

// The screen of a private X11 desktop, queried over a connection of its own, and what only X11 has.
// Thread: main.
namespace X11Screen {

ScreenObserver &observer();

// Whether another client (a menu, a screen locker) has grabbed the keyboard.
bool isKeyboardGrabbed();

bool isAKeyPressed();

// The keycodes that have any keysym.
QSet<int> keysWithSymbols();

// Whether a window manager has reparented the window into a frame.
bool hasFrame(quint32 window);

} // namespace X11Screen
