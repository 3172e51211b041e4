// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Typing/KeymapLayout.h"
#include "Desktop/Linux/Wayland/Connection.h"

// The user's layout at one moment.
struct UserLayout
{
    KeyboardLayout keys;
    std::uint32_t group = 0;
    int keymap = 0; // which of those announced so far
};

// The keymap of the user's keyboards, as the compositor announces it. `connection` must outlive this object.
// Thread: main.
class UserKeymap
{
public:
    explicit UserKeymap(WaylandConnection &connection);
    ~UserKeymap();
    UserKeymap(const UserKeymap &) = delete;
    UserKeymap &operator=(const UserKeymap &) = delete;

    // The layout of this group. Throws PlatformError if the compositor announces no keymap.
    QCoro::Task<UserLayout> layout(std::uint32_t group);

    // Throws PlatformError unless the layout is still the same when this group is active.
    void requireSame(const UserLayout &layout, std::uint32_t group) const;

private:
    struct Listener;

    void read(int descriptor, std::size_t size);

    WaylandConnection &m_connection;
    wl_seat *m_seat = nullptr;
    wl_keyboard *m_keyboard = nullptr; // null while the seat has no keyboard
    XkbPointer<xkb_context> m_context;
    XkbPointer<xkb_keymap> m_keymap;
    int m_number = 0;
};
