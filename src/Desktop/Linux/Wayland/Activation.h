// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Linux/Wayland/Connection.h"

#include <functional>

// Bringing a window to the front, whatever the protocol.
namespace WaylandActivation {

enum class Standing { Gone, Inactive, Active };

// How a protocol says where the window stands, and activates it if it isn't active.
struct Steps
{
    std::function<Standing()> standing;
    std::function<void()> activate;
};

// Activates the window with this title, and waits until it is active. Throws PlatformError if it is gone or
// isn't active within Deadlines::focus. `connection`, `clock` and what the steps use must outlive the task.
// Thread: main.
QCoro::Task<void> bringForward(WaylandConnection &connection, Clock &clock, QString title, Steps steps);

} // namespace WaylandActivation
