// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Wayland/Connection.h"

#include <QHash>

struct org_kde_kwin_keystate;

// Which modifier keys the user holds, from a compositor with the protocol keystate. `connection` must outlive
// this object. Thread: main.
class KeyStates
{
public:
    static bool isOfferedBy(const WaylandConnection &connection);

    explicit KeyStates(WaylandConnection &connection);
    ~KeyStates();
    KeyStates(const KeyStates &) = delete;
    KeyStates &operator=(const KeyStates &) = delete;

    // Asks for the current states. Throws PlatformError.
    QCoro::Task<void> update();

    // As of the last update.
    bool isModifierHeld() const;
    bool isCapsLockOn() const;

private:
    struct Listener;

    WaylandConnection &m_connection;
    org_kde_kwin_keystate *m_keyState = nullptr;
    QHash<std::uint32_t, std::uint32_t> m_states; // by key
};
