// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/HotKeys/KeyGrabs.h"
#include "Desktop/Linux/X11/Connection.h"

#include <QMap>
#include <QSet>

#include <functional>

// Passive key grabs on the root window, renewed when the keymap changes. Must receive every event of its
// connection. Thread: X, except for construction.
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
        std::function<void()> pressed; // called on the X thread, once per physical key press
    };

    // Grabs the key and stores it under `number`. Returns false, with nothing grabbed, if another program
    // owns the key or the keyboard lacks it. Throws PlatformError if the server is lost.
    bool add(int number, HotKey hotKey);
    void remove(int number);

    void handle(const xcb_generic_event_t &event);

private:
    struct Entry
    {
        HotKey hotKey;
        KeyGrabs grabs; // currently held
    };

    bool prepare();
    CoreKeyboard keyboard() const;
    bool grab(const KeyGrabs &grabs) const;
    void ungrab(const KeyGrabs &grabs) const;
    void grabAgain();
    void handlePress(const xcb_key_press_event_t &event);

    X11Connection &m_connection;
    QMap<int, Entry> m_entries;
    QSet<std::uint8_t> m_held; // keycodes that are down
    bool m_isPrepared = false;
    std::uint8_t m_firstXkbEvent = 0;
};
