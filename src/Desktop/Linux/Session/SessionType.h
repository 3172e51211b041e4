// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

// The server of $DISPLAY.
enum class DisplayServer { None, Xorg, Xwayland };

// The type of desktop this process works on.
enum class SessionType { None, X11, Wayland };

namespace Sessions {

// Connects to find out, and blocks as X11Link does. Any thread.
DisplayServer displayServer();

// A responding X server decides: a real one (not Xwayland) is an X11 desktop, even nested in a Wayland
// session whose environment variables are inherited. The environment counts only if there is no such server.
SessionType typeWith(DisplayServer server);

// Whether the environment indicates a Wayland session.
bool isWaylandNamed();

// Why actions can't work on a desktop of this type, and what to do about it, as one sentence; nothing if they
// can, or if there is no desktop.
std::optional<QString> obstacle(SessionType type);

} // namespace Sessions
