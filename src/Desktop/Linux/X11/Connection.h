// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Link.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>

// xcb allocates replies and events with malloc.
struct X11Free
{
    void operator()(void *memory) const { std::free(memory); }
};
template <typename Reply>
using X11Reply = std::unique_ptr<Reply, X11Free>;

// The raw value of a window property.
struct X11Property
{
    xcb_atom_t type = XCB_ATOM_NONE;
    QByteArray bytes;

    QList<std::uint32_t> values() const; // of a property in format 32
};

// A connection to the X server, separate from Qt's. Every reply is checked: a destroyed window or a lost
// server yields an absent value and never terminates the process. Thread: X, except for `interrupt`,
// `fileDescriptor` and `isXwayland`.
class X11Connection
{
public:
    // Connects to $DISPLAY; throws PlatformError like X11Link.
    X11Connection();
    ~X11Connection();
    X11Connection(const X11Connection &) = delete;
    X11Connection &operator=(const X11Connection &) = delete;

    xcb_connection_t *get() const { return m_connection; }
    const xcb_ewmh_connection_t &atoms() const { return m_ewmh; }
    xcb_screen_t *screen() const { return m_screen; }
    int screenNumber() const { return m_link.screenNumber; }
    bool isXwayland() const { return m_link.isXwayland; }
    xcb_window_t root() const { return m_screen->root; }
    xcb_window_t ownWindow() const { return m_window; } // unmapped; for requests that need a window
    xcb_atom_t deleteWindowAtom() const { return m_deleteWindow; }
    xcb_atom_t startupIdentifierAtom() const { return m_startupIdentifier; }
    // Window properties that name the application's desktop entry.
    xcb_atom_t gtkApplicationAtom() const { return m_gtkApplication; }
    xcb_atom_t desktopFileAtom() const { return m_desktopFile; }

    // Blocks SIGPIPE on the calling thread: otherwise, writing to a lost server would terminate the process.
    // Call it on every thread that uses a connection.
    static void prepareThread();

    // Throws PlatformError if the connection is lost.
    void requireAlive() const;

    // Returns the atom, creating it if necessary, or XCB_ATOM_NONE on error.
    xcb_atom_t internAtom(const char *name) const;

    // Send all requests before reading the replies, so that they take one round trip.
    xcb_get_property_cookie_t request(xcb_window_t window, xcb_atom_t property) const;
    std::optional<X11Property> read(xcb_get_property_cookie_t cookie) const;
    std::optional<X11Property> property(xcb_window_t window, xcb_atom_t property) const;

    // Sends the window manager a client message about `window`, with up to five values.
    void sendToManager(xcb_window_t window, xcb_atom_t type, const QList<std::uint32_t> &values) const;

    // The server's current timestamp, or 0 if it doesn't reply.
    xcb_timestamp_t serverTime();

    // Waits until the window's client has processed all earlier events, using _NET_WM_PING. Returns false on
    // timeout. Some clients send their reply so that only the window manager receives it.
    bool waitUntilHandled(xcb_window_t window, std::chrono::milliseconds limit);

    // Handles the queued events. `onRootChange` is called for every changed property of the root window.
    void drainEvents();
    std::function<void(xcb_atom_t property)> onRootChange;

    // Also passes every event to the handler, for this object's lifetime.
    using EventHandler = std::function<void(const xcb_generic_event_t &event)>;
    void addEventHandler(EventHandler handler);

    int fileDescriptor() const { return xcb_get_file_descriptor(m_connection); }

    // Ends all current and future waits for the server at once. Any thread.
    void interrupt() const;

private:
    void sendPing(xcb_window_t window, xcb_timestamp_t time) const;
    void handle(const xcb_generic_event_t &event);
    void handleMessage(const xcb_client_message_event_t &message);
    void handleChange(const xcb_property_notify_event_t &change);

    X11Link m_link;
    xcb_connection_t *m_connection = nullptr; // owned by m_link
    xcb_ewmh_connection_t m_ewmh{};
    xcb_screen_t *m_screen = nullptr;
    xcb_window_t m_window = XCB_NONE; // unmapped; used for timestamps
    xcb_atom_t m_deleteWindow = XCB_ATOM_NONE;
    xcb_atom_t m_startupIdentifier = XCB_ATOM_NONE;
    xcb_atom_t m_gtkApplication = XCB_ATOM_NONE;
    xcb_atom_t m_desktopFile = XCB_ATOM_NONE;
    xcb_timestamp_t m_time = 0;     // of m_window's last property event
    xcb_timestamp_t m_lastEcho = 0; // timestamp of the last ping reply
    QList<EventHandler> m_eventHandlers;
};
