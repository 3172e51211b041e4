// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace LinuxDisplay {

// Whether a window system is there to show a window on; where Qt by itself might take another one than ours,
// or none, tells Qt through $QT_QPA_PLATFORM which one. Who has named one there already is believed. Asks
// the X server and waits for it for two seconds at most; call it before there is an application object.
bool prepare();

} // namespace LinuxDisplay
