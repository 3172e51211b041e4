// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Typing/KeymapLayout.h"
#include "Desktop/Linux/Wayland/Connection.h"

// The keymap of the user's keyboards, as the compositor announces it. `connection` must outlive this object.
// Thread: main.
class UserKeymap
{
public:
    explicit UserKeymap(WaylandConnection &connection);
    ~UserKeymap();
    UserKeymap(const UserKeymap &) = delete;
    UserKeymap &operator=(const UserKeymap &) = delete;

    // The layout of this group. Throws PlatformError while the compositor has announced no keymap.
    KeyboardLayout layout(std::uint32_t group) const;

    // Counts the keymaps that were announced.
    int number() const { return m_number; }

private:
    struct Listener;

    void read(int descriptor, std::size_t size);

    wl_seat *m_seat = nullptr;
    wl_keyboard *m_keyboard = nullptr; // null while the seat has no keyboard
    XkbPointer<xkb_context> m_context;
    XkbPointer<xkb_keymap> m_keymap;
    int m_number = 0;
};
