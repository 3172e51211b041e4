// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Linux/WindowSystem/WindowSystem.h"

#include <functional>

// Bringing a window to the front, whatever the window system.
namespace Activation {

// Requests the activation of the window with this identifier, if it still exists.
using Request = std::function<QCoro::Task<void>(std::uint32_t window)>;

// Has the window activated, and waits until it is active. Throws PlatformError if it is gone or isn't active
// within Deadlines::focus. `windowSystem`, `clock` and what the request uses must outlive the task. Thread:
// main.
QCoro::Task<void> bringForward(WindowSystem &windowSystem, Clock &clock, DesktopWindow window,
                               Request request);

} // namespace Activation
