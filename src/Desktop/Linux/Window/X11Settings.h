// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Selection.h"

#include <functional>

// Follows the GTK theme that an XSETTINGS daemon publishes. Must receive every event of its connection.
// Thread: X, except for construction.
class X11Settings
{
public:
    // `themeChanged` is called on the X thread, with an empty name if there is no daemon.
    X11Settings(X11Connection &connection, std::function<void(QString name)> themeChanged);
    X11Settings(const X11Settings &) = delete;
    X11Settings &operator=(const X11Settings &) = delete;

    // Reports the current theme, then every change.
    void follow();
    void handle(const xcb_generic_event_t &event);

private:
    void setDaemon(xcb_window_t daemon);
    void read();

    X11Connection &m_connection;
    X11Selection m_selection;
    std::function<void(QString name)> m_themeChanged;
    xcb_atom_t m_property = XCB_ATOM_NONE;
    xcb_window_t m_daemon = XCB_NONE;
};
