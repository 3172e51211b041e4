// SPDX-License-Identifier: Apache-2.0
#pragma once

// The screen lockers of Wayland compositors without a lock service: no protocol reports them.
namespace LockerProcesses {

// Whether the user runs a screen locker on this compositor: swaylock, for example. They run only while the
// screen is locked. Reads /proc. Any thread.
bool isAnyRunning();

} // namespace LockerProcesses
