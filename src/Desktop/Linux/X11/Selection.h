// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

#include <functional>

// Who owns a selection by which a service of the desktop shows that it runs (a compositor, a settings
// daemon). X thread only, apart from construction; sees every event of its connection.
class X11Selection
{
public:
    // `name` is completed by the number of the screen. `ownerChanged` is called on the X thread, with no
    // window when there is no owner.
    X11Selection(X11Connection &connection, const QByteArray &name,
                 std::function<void(xcb_window_t owner)> ownerChanged);
    X11Selection(const X11Selection &) = delete;
    X11Selection &operator=(const X11Selection &) = delete;

    // Tells the present owner, and from then on every new one.
    void follow();
    void handle(const xcb_generic_event_t &event);

private:
    void watch();

    X11Connection &m_connection;
    QByteArray m_name;
    std::function<void(xcb_window_t owner)> m_ownerChanged;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    int m_notifyEvent = -1; // none, unless the server tells of changes
};
