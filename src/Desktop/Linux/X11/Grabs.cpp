// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11/Grabs.h"

#include <QMargins>
#include <QRegion>
#include <QSet>

#include <xcb/randr.h>

#include <algorithm>
#include <ranges>
#include <span>

namespace {

constexpr bool withOwnEvents = false;

X11Reply<xcb_query_tree_reply_t> treeOf(xcb_connection_t *connection, xcb_window_t window)
{
    return X11Reply<xcb_query_tree_reply_t>(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
}

QRect placeOf(xcb_connection_t *connection, xcb_window_t window)
{
    const X11Reply<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
    return reply ? QRect(reply->x, reply->y, reply->width, reply->height) : QRect();
}

// The top-level windows of applications: the window manager's frames, or unreparented client windows.
QSet<xcb_window_t> framesOfApplications(const X11Connection &connection)
{
    QSet<xcb_window_t> result;
    const auto list = connection.property(connection.root(), connection.atoms()._NET_CLIENT_LIST);
    const QList<std::uint32_t> clients = list ? list->values() : QList<std::uint32_t>();
    for (xcb_window_t window : clients) {
        auto tree = treeOf(connection.get(), window);
        while (tree && tree->parent != XCB_NONE && tree->parent != connection.root()) {
            window = tree->parent;
            tree = treeOf(connection.get(), window);
        }
        result.insert(window);
    }
    return result;
}

// The region covered by windows above all application windows.
QRegion coverOfApplications(const X11Connection &connection)
{
    xcb_connection_t *const server = connection.get();
    const auto tree = treeOf(server, connection.root());
    if (!tree)
        return QRegion();
    const QSet<xcb_window_t> frames = framesOfApplications(connection);
    const std::span bottomUp(xcb_query_tree_children(tree.get()),
                             static_cast<size_t>(xcb_query_tree_children_length(tree.get())));
    QRegion cover;
    for (const xcb_window_t window : std::views::reverse(bottomUp)) {
        const X11Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(server, xcb_get_window_attributes(server, window), nullptr));
        if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE)
            continue;
        if (!attributes->override_redirect || frames.contains(window))
            break;
        cover += placeOf(server, window);
    }
    return cover;
}

// Some lockers leave an edge uncovered, so that a compositor doesn't treat their window as full-screen.
constexpr QMargins edge(2, 2, 2, 2);

// The area of the monitors without their edges, or of the whole screen if the server reports no monitors.
QRegion monitors(const X11Connection &connection)
{
    const auto *const extension = xcb_get_extension_data(connection.get(), &xcb_randr_id);
    QRegion result;
    if (extension && extension->present) {
        constexpr bool onlyActive = true;
        const auto cookie = xcb_randr_get_monitors(connection.get(), connection.root(), onlyActive);
        const X11Reply<xcb_randr_get_monitors_reply_t> reply(
            xcb_randr_get_monitors_reply(connection.get(), cookie, nullptr));
        auto each = reply ? xcb_randr_get_monitors_monitors_iterator(reply.get())
                          : xcb_randr_monitor_info_iterator_t{};
        for (; each.rem > 0; xcb_randr_monitor_info_next(&each))
            result += QRect(each.data->x, each.data->y, each.data->width, each.data->height) - edge;
    }
    return result.isEmpty() ? placeOf(connection.get(), connection.root()) - edge : result;
}

// Probes as isKeyboardTaken does.
bool isPointerTaken(const X11Connection &connection)
{
    constexpr std::uint16_t noEvents = 0;
    const auto cookie =
        xcb_grab_pointer(connection.get(), withOwnEvents, connection.ownWindow(), noEvents,
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const X11Reply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(connection.get(), cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

} // namespace

// The protocol has no query for grabs. Grabbing for an unmapped window always fails, but the server reports
// AlreadyGrabbed before it checks the window.
bool X11Grabs::isKeyboardTaken(const X11Connection &connection)
{
    const auto cookie = xcb_grab_keyboard(connection.get(), withOwnEvents, connection.ownWindow(),
                                          XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const X11Reply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(connection.get(), cookie, nullptr));
    connection.requireAlive();
    return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

bool X11Grabs::isScreenLocked(const X11Connection &connection)
{
    if (!isKeyboardTaken(connection) || !isPointerTaken(connection))
        return false;
    const QRegion uncovered = monitors(connection) - coverOfApplications(connection);
    connection.requireAlive();
    return uncovered.isEmpty();
}
