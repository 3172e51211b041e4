// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace LinuxDisplay {

// Whether a window system is there to show a window on. Asks the X server, where there is nothing else, and
// waits for it for two seconds at most; needs no application object, and may be called before there is one.
bool isPresent();

} // namespace LinuxDisplay
