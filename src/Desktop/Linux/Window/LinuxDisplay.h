// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace LinuxDisplay {

// Returns whether there is a window system for our window, and sets $QT_QPA_PLATFORM where Qt might choose a
// different one than the desktop services. An explicitly chosen platform is trusted without probing. Blocks
// for up to two seconds. Call it before the application object is constructed.
bool prepare();

} // namespace LinuxDisplay
