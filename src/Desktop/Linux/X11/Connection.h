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

// Replies and events of xcb come from malloc.
struct X11Free
{
    void operator()(void *memory) const { std::free(memory); }
};
template <typename Reply>
using X11Reply = std::unique_ptr<Reply, X11Free>;

// A window property as it came over the wire.
struct X11Property
{
    xcb_atom_t type = XCB_ATOM_NONE;
    QByteArray bytes;

    QList<std::uint32_t> values() const; // for properties of 32-bit items
};

// Our own connection to the X server, apart from Qt's. Used on the X thread alone, except for `interrupt`,
// `fileDescriptor` and `isXwayland`. Every answer is checked: what is gone (a window, the server) shows as an
// absent value, and never ends this process.
class X11Connection
{
public:
    // Connects to $DISPLAY; throws PlatformError, as X11Link does.
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
    xcb_window_t ownWindow() const { return m_window; } // never shown; for what needs a window to speak for
    xcb_atom_t deleteWindowAtom() const { return m_deleteWindow; }
    xcb_atom_t startupIdentifierAtom() const { return m_startupIdentifier; }
    // Two names of the property in which a window tells its application's desktop entry.
    xcb_atom_t gtkApplicationAtom() const { return m_gtkApplication; }
    xcb_atom_t desktopFileAtom() const { return m_desktopFile; }

    // To be called on the thread that is to use a connection: otherwise, writing to a server that has died
    // would end the process.
    static void prepareThread();

    // Throws PlatformError when the server is gone.
    void requireAlive() const;

    // The atom of that name, made when there is none.
    xcb_atom_t internAtom(const char *name) const;

    // Properties are asked for first and read afterwards, so that many cost one round trip.
    xcb_get_property_cookie_t request(xcb_window_t window, xcb_atom_t property) const;
    std::optional<X11Property> read(xcb_get_property_cookie_t cookie) const;
    std::optional<X11Property> property(xcb_window_t window, xcb_atom_t property) const;

    // A message to the window manager about `window`, with up to five values.
    void sendToManager(xcb_window_t window, xcb_atom_t type, const QList<std::uint32_t> &values) const;

    // The server's present time, 0 when it does not answer.
    xcb_timestamp_t serverTime();

    // Waits until the client that owns the window has handled all that was sent to it before, by its answer
    // to a ping; false when the limit is over first. Some answer so that only the window manager sees it.
    bool waitUntilHandled(xcb_window_t window, std::chrono::milliseconds limit);

    // Handles the events that have arrived; `onRootChange` is called for every change of one of the root
    // window's properties.
    void drainEvents();
    std::function<void(xcb_atom_t property)> onRootChange;

    // Shows every event to the handler too, for as long as this lives.
    using EventHandler = std::function<void(const xcb_generic_event_t &event)>;
    void addEventHandler(EventHandler handler);

    int fileDescriptor() const { return xcb_get_file_descriptor(m_connection); }

    // Makes every present and later wait for the server end at once. Any thread.
    void interrupt() const;

private:
    void sendPing(xcb_window_t window, xcb_timestamp_t time) const;
    void handle(const xcb_generic_event_t &event);
    void handleMessage(const xcb_client_message_event_t &message);
    void handleChange(const xcb_property_notify_event_t &change);

    X11Link m_link;
    xcb_connection_t *m_connection = nullptr; // that of the link
    xcb_ewmh_connection_t m_ewmh{};
    xcb_screen_t *m_screen = nullptr;
    xcb_window_t m_window = XCB_NONE; // never shown: it marks the time
    xcb_atom_t m_deleteWindow = XCB_ATOM_NONE;
    xcb_atom_t m_startupIdentifier = XCB_ATOM_NONE;
    xcb_atom_t m_gtkApplication = XCB_ATOM_NONE;
    xcb_atom_t m_desktopFile = XCB_ATOM_NONE;
    xcb_timestamp_t m_time = 0;     // as last told to m_window
    xcb_timestamp_t m_lastEcho = 0; // of the last ping that was answered
    QList<EventHandler> m_eventHandlers;
};
