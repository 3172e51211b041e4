// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/UserKeymap.h"

#include "Desktop/PlatformError.h"

#include <sys/mman.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// The protocol's callbacks.
struct UserKeymap::Listener
{
    static UserKeymap &of(void *data) { return *static_cast<UserKeymap *>(data); }

    static void capabilities(void *data, wl_seat *seat, std::uint32_t capabilities)
    {
        wl_keyboard *&known = of(data).m_keyboard;
        const bool hasKeyboard = capabilities & WL_SEAT_CAPABILITY_KEYBOARD;
        if (hasKeyboard && !known) {
            known = wl_seat_get_keyboard(seat);
            wl_keyboard_add_listener(known, &keyboard, data);
        } else if (!hasKeyboard && known) {
            wl_keyboard_release(known);
            known = nullptr;
        }
    }
    static void name(void *, wl_seat *, const char *) {}

    static void keymap(void *data, wl_keyboard *, std::uint32_t format, int descriptor, std::uint32_t size)
    {
        if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
            of(data).read(descriptor, size);
        close(descriptor);
    }
    static void enter(void *, wl_keyboard *, std::uint32_t, wl_surface *, wl_array *) {}
    static void leave(void *, wl_keyboard *, std::uint32_t, wl_surface *) {}
    static void key(void *, wl_keyboard *, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) {}
    static void modifiers(void *, wl_keyboard *, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                          std::uint32_t)
    {
    }
    static void repetition(void *, wl_keyboard *, std::int32_t, std::int32_t) {}

    static constexpr wl_seat_listener seat{&capabilities, &name};
    static constexpr wl_keyboard_listener keyboard{&keymap, &enter, &leave, &key, &modifiers, &repetition};
};

UserKeymap::UserKeymap(WaylandConnection &connection)
    : m_connection(connection), m_seat(connection.bind<wl_seat>(wl_seat_interface, 5)),
      m_context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES))
{
    wl_seat_add_listener(m_seat, &Listener::seat, this);
    connection.flush();
}

UserKeymap::~UserKeymap()
{
    if (m_keyboard)
        wl_keyboard_release(m_keyboard);
    wl_seat_release(m_seat);
}

void UserKeymap::read(int descriptor, std::size_t size)
{
    void *text = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
    if (text == MAP_FAILED)
        return;
    // The text ends with a zero byte, which isn't part of it.
    m_keymap.reset(xkb_keymap_new_from_buffer(m_context.get(), static_cast<const char *>(text),
                                              strnlen(static_cast<const char *>(text), size),
                                              XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
    munmap(text, size);
    ++m_number;
}

QCoro::Task<UserLayout> UserKeymap::layout(std::uint32_t group)
{
    // At first, the answer is that there is a keyboard.
    if (!m_keymap)
        co_await m_connection.roundTrip();
    co_await m_connection.roundTrip();
    if (!m_keymap)
        throw PlatformError(u"The compositor hasn't told the keyboard's layout."_s);
    const UserLayout layout{layoutOf(m_keymap.get(), group), group, m_number};
    co_return layout;
}

void UserKeymap::requireSame(const UserLayout &layout, std::uint32_t group) const
{
    if (group != layout.group || m_number != layout.keymap)
        throw PlatformError(u"The keyboard layout changed, so typing was stopped."_s);
}
