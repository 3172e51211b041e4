// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/WaylandUserConnection.h"

#include <QString>

#include <cstdint>
#include <memory>

struct xkb_state;
struct zwp_virtual_keyboard_v1;

// A user's keyboard with the US layout on a private Wayland desktop, attached for this object's lifetime.
// Thread: main.
class WaylandUserKeyboard
{
public:
    WaylandUserKeyboard();
    ~WaylandUserKeyboard();
    WaylandUserKeyboard(const WaylandUserKeyboard &) = delete;
    WaylandUserKeyboard &operator=(const WaylandUserKeyboard &) = delete;

    // Presses a key combination in xdotool's notation ("ctrl+l").
    void press(const QString &combination);

private:
    void sendKeymap();
    void set(std::uint32_t key, bool isDown);

    struct Release
    {
        void operator()(xkb_state *state) const;
        void operator()(zwp_virtual_keyboard_v1 *keyboard) const;
    };

    WaylandUserConnection m_connection;
    std::unique_ptr<zwp_virtual_keyboard_v1, Release> m_keyboard;
    std::unique_ptr<xkb_state, Release> m_state;
};
