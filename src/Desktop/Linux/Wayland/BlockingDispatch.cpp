// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/BlockingDispatch.h"

#include "Desktop/Deadlines.h"
#include "Desktop/Linux/Wayland/Object.h"
#include "Desktop/PlatformError.h"

#include <QDeadlineTimer>

#include <poll.h>
#include <wayland-client.h>

using namespace Qt::StringLiterals;

namespace {

void requireSuccess(int result)
{
    if (result < 0)
        throw PlatformError(u"The Wayland compositor has closed the connection."_s);
}

void dispatch(wl_display *display, const QDeadlineTimer &deadline)
{
    while (wl_display_prepare_read(display) != 0)
        requireSuccess(wl_display_dispatch_pending(display));
    wl_display_flush(display);
    pollfd question{wl_display_get_fd(display), POLLIN, 0};
    if (poll(&question, 1, static_cast<int>(deadline.remainingTime())) <= 0) {
        wl_display_cancel_read(display);
        throw PlatformError(u"The Wayland compositor doesn't answer."_s);
    }
    requireSuccess(wl_display_read_events(display));
    requireSuccess(wl_display_dispatch_pending(display));
}

} // namespace

void BlockingDispatch::until(wl_display *display, const std::function<bool()> &isDone)
{
    const QDeadlineTimer deadline(Deadlines::answer);
    while (!isDone())
        dispatch(display, deadline);
}

void BlockingDispatch::roundTrip(wl_display *display)
{
    bool isAnswered = false;
    static constexpr wl_callback_listener listener{
        [](void *data, wl_callback *, std::uint32_t) { *static_cast<bool *>(data) = true; }};
    const WaylandObject<wl_callback, wl_callback_destroy> callback(wl_display_sync(display));
    wl_callback_add_listener(callback.get(), &listener, &isAnswered);
    until(display, [&isAnswered] { return isAnswered; });
}
