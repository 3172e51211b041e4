// SPDX-License-Identifier: Apache-2.0
#include "applications/support/WaylandUserKeyboard.h"

#include "applications/support/UsLayout.h"

#include <QList>

#include <virtual-keyboard-unstable-v1-client-protocol.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdlib>
#include <ranges>

#include <sys/mman.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint32_t kernelOffset = 8; // XKB's keycodes are the kernel's plus this

} // namespace

void WaylandUserKeyboard::Release::operator()(xkb_state *state) const
{
    xkb_state_unref(state);
}

void WaylandUserKeyboard::Release::operator()(zwp_virtual_keyboard_v1 *keyboard) const
{
    zwp_virtual_keyboard_v1_destroy(keyboard);
}

WaylandUserKeyboard::WaylandUserKeyboard() : m_state(xkb_state_new(UsLayout::keymap()))
{
    auto *manager =
        m_connection.bind<zwp_virtual_keyboard_manager_v1>(zwp_virtual_keyboard_manager_v1_interface);
    m_keyboard.reset(zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(
        manager, m_connection.bind<wl_seat>(wl_seat_interface)));
    sendKeymap();
}

WaylandUserKeyboard::~WaylandUserKeyboard() = default;

void WaylandUserKeyboard::sendKeymap()
{
    char *text = xkb_keymap_get_as_string(UsLayout::keymap(), XKB_KEYMAP_FORMAT_TEXT_V1);
    const std::size_t size = qstrlen(text) + 1;
    const int file = memfd_create("keymap", MFD_CLOEXEC);
    if (::write(file, text, size) != static_cast<ssize_t>(size))
        qFatal("the keymap cannot be written");
    std::free(text);
    zwp_virtual_keyboard_v1_keymap(m_keyboard.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                   static_cast<std::uint32_t>(size));
    m_connection.roundTrip();
    ::close(file);
}

void WaylandUserKeyboard::set(std::uint32_t key, bool isDown)
{
    xkb_state_update_key(m_state.get(), key + kernelOffset, isDown ? XKB_KEY_DOWN : XKB_KEY_UP);
    zwp_virtual_keyboard_v1_key(m_keyboard.get(), WaylandUserConnection::now(), key,
                                isDown ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    const auto modifiers = [this](xkb_state_component component) {
        return xkb_state_serialize_mods(m_state.get(), component);
    };
    zwp_virtual_keyboard_v1_modifiers(m_keyboard.get(), modifiers(XKB_STATE_MODS_DEPRESSED),
                                      modifiers(XKB_STATE_MODS_LATCHED), modifiers(XKB_STATE_MODS_LOCKED), 0);
}

void WaylandUserKeyboard::press(const QString &combination)
{
    const QList<std::uint32_t> keys = UsLayout::keysOf(combination);
    for (const std::uint32_t key : keys)
        set(key, true);
    for (const std::uint32_t key : std::views::reverse(keys))
        set(key, false);
    m_connection.roundTrip();
}
