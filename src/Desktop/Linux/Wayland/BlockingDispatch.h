// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

struct wl_display;

// Waiting for a compositor where nothing else is to be done meanwhile: each call blocks, at most for
// Deadlines::answer. Throws PlatformError if the compositor doesn't answer or closes the connection. Any
// thread, but only one at a time for each display.
namespace BlockingDispatch {

// Dispatches events until `isDone`.
void until(wl_display *display, const std::function<bool()> &isDone);

// Returns once the compositor has handled all requests and their events have been dispatched.
void roundTrip(wl_display *display);

} // namespace BlockingDispatch
