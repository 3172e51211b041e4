// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11/Link.h"

#include "Desktop/Linux/X11/Connection.h"
#include "Desktop/Linux/X11/Xwayland.h"
#include "Desktop/PlatformError.h"

#include <chrono>
#include <future>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds limit{2};

X11Link opened()
{
    X11Connection::prepareThread();
    X11Link link;
    link.connection.reset(xcb_connect(nullptr, &link.screenNumber), &xcb_disconnect);
    link.isXwayland = !xcb_connection_has_error(link.connection.get()) && isXwayland(link.connection.get());
    return link;
}

} // namespace

X11Link X11Link::open()
{
    // xcb_connect has no timeout. After ours, the detached thread closes the connection whenever it is
    // established.
    std::packaged_task<X11Link()> task(&opened);
    std::future<X11Link> answer = task.get_future();
    std::thread(std::move(task)).detach();
    if (answer.wait_for(limit) != std::future_status::ready)
        throw PlatformError(u"The X server doesn't answer."_s);
    X11Link link = answer.get();
    if (xcb_connection_has_error(link.connection.get()))
        throw PlatformError(
            u"The screen can't be reached: no X server answers. Start Orvane inside a graphical session."_s);
    return link;
}
