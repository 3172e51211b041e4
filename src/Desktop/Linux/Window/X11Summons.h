// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

#include <QPoint>

// X requests for bringing one of our windows to the front. Requests that get no reply are skipped. Thread: X.
namespace X11Summons {

// The pointer position in native pixels; nothing if it is on another X screen.
std::optional<QPoint> pointerPosition(const X11Connection &connection);

// Moves the window to the current workspace.
void moveToCurrentDesktop(const X11Connection &connection, std::uint32_t window);

// Tells the desktop that the launch with this token has completed, which ends its busy cursor.
void endLaunchFeedback(const X11Connection &connection, const QByteArray &token);

} // namespace X11Summons
