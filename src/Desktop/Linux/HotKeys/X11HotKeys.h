// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/HotKeys/KeyGrabs.h"
#include "Desktop/Linux/X11/Connection.h"

#include <QMap>
#include <QSet>

#include <functional>

// The keys that are grabbed on the root window, so that they reach us whichever window has the focus. Grabs
// again what another keyboard map puts elsewhere. X thread only, apart from construction; sees every event of
// its connection.
class X11HotKeys
{
public:
    explicit X11HotKeys(X11Connection &connection) : m_connection(connection) {}
    X11HotKeys(const X11HotKeys &) = delete;
    X11HotKeys &operator=(const X11HotKeys &) = delete;

    struct HotKey
    {
        std::uint32_t symbol = 0;
        HotKeyModifiers modifiers;
        std::function<void()> pressed; // called on the X thread, once each time the key goes down
    };

    // Grabs the key under that number. False, with nothing grabbed, when another program owns it, or this
    // keyboard does not have it. Throws PlatformError when the server is gone.
    bool add(int number, HotKey hotKey);
    void remove(int number);

    void handle(const xcb_generic_event_t &event);

private:
    struct Entry
    {
        HotKey hotKey;
        KeyGrabs grabs; // those that we hold
    };

    bool prepare();
    CoreKeyboard keyboard() const;
    bool grab(const KeyGrabs &grabs) const;
    void ungrab(const KeyGrabs &grabs) const;
    void grabAgain();
    void handlePress(const xcb_key_press_event_t &event);

    X11Connection &m_connection;
    QMap<int, Entry> m_entries;
    QSet<std::uint8_t> m_held; // codes that have gone down and not yet up
    bool m_isPrepared = false;
    std::uint8_t m_firstXkbEvent = 0;
};
