// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

// What answers on the display that $DISPLAY names.
enum class DisplayServer { None, Xorg, Xwayland };

// What kind of desktop this process has to work on.
enum class SessionType { None, X11, Wayland };

namespace Sessions {

// Asks, and waits as X11Link does; any thread.
DisplayServer displayServer();

// Where an X server answers, it decides: one of its own is a desktop of its own, also inside a Wayland
// session, whose variables may still be there. Only without one is the environment asked.
SessionType typeWith(DisplayServer server);

// Whether the environment names a Wayland session.
bool isWaylandNamed();

// Why actions cannot work on a desktop of that type, and what to do about it, in one sentence; nothing where
// they can, or where there is no desktop at all.
std::optional<QString> obstacle(SessionType type);

} // namespace Sessions
