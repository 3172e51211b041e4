// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

#include <functional>

// Tracks the owner of a manager selection, which a desktop service (a compositor, a settings daemon) owns
// while it runs. Must receive every event of its connection. Thread: X, except for construction.
class X11Selection
{
public:
    // The screen number is appended to `name`. `ownerChanged` is called on the X thread, with XCB_NONE if
    // there is no owner.
    X11Selection(X11Connection &connection, const QByteArray &name,
                 std::function<void(xcb_window_t owner)> ownerChanged);
    X11Selection(const X11Selection &) = delete;
    X11Selection &operator=(const X11Selection &) = delete;

    // Reports the current owner, then every change.
    void follow();
    void handle(const xcb_generic_event_t &event);

private:
    void watch();

    X11Connection &m_connection;
    QByteArray m_name;
    std::function<void(xcb_window_t owner)> m_ownerChanged;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    int m_notifyEvent = -1; // -1 without XFixes
};
