// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

namespace LinuxDisplay {

// Returns whether there is a window system for our window, and sets $QT_QPA_PLATFORM where Qt might choose a
// different one than the desktop services: where these operate the windows of a Wayland compositor
// (`areWindowsOperated`), ours is one of those, if Qt can show it there. An explicitly chosen platform is
// trusted without probing. Blocks for up to two seconds, or for longer if `areWindowsOperated` does. Call it
// before the application object is constructed.
bool prepare(const std::function<bool()> &areWindowsOperated);

} // namespace LinuxDisplay
