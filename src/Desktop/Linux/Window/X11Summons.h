// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

#include <QPoint>

// What it takes on the X server to bring a window of ours to the user. X thread only; what the server does
// not answer stays undone.
namespace X11Summons {

// Where the pointer is, in pixels; nothing when it is on another X screen.
std::optional<QPoint> pointerPosition(const X11Connection &connection);

// Moves the window to the workspace that is shown, where there are several.
void moveToCurrentDesktop(const X11Connection &connection, std::uint32_t window);

// Tells the desktop that what the user started under this token has come up, which ends its busy pointer.
void endLaunchFeedback(const X11Connection &connection, const QByteArray &token);

} // namespace X11Summons
