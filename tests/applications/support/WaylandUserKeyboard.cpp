// SPDX-License-Identifier: Apache-2.0
#include "applications/support/WaylandUserKeyboard.h"

#include "applications/support/X11Names.h"

#include <QList>
#include <QStringList>

#include <virtual-keyboard-unstable-v1-client-protocol.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdlib>
#include <ranges>

#include <sys/mman.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint32_t kernelOffset = 8; // XKB's keycodes are the kernel's plus this

xkb_state *newState()
{
    xkb_context *context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    xkb_rule_names names{};
    names.layout = "us";
    xkb_keymap *keymap = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    xkb_context_unref(context);
    xkb_state *state = xkb_state_new(keymap);
    xkb_keymap_unref(keymap);
    return state;
}

} // namespace

void WaylandUserKeyboard::Release::operator()(xkb_state *state) const
{
    xkb_state_unref(state);
}

void WaylandUserKeyboard::Release::operator()(zwp_virtual_keyboard_v1 *keyboard) const
{
    zwp_virtual_keyboard_v1_destroy(keyboard);
}

WaylandUserKeyboard::WaylandUserKeyboard() : m_state(newState())
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
    char *text = xkb_keymap_get_as_string(xkb_state_get_keymap(m_state.get()), XKB_KEYMAP_FORMAT_TEXT_V1);
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

std::uint32_t WaylandUserKeyboard::keycodeOf(const QString &name) const
{
    const xkb_keysym_t symbol =
        xkb_keysym_from_name(X11Names::keyName(name).toUtf8().constData(), XKB_KEYSYM_NO_FLAGS);
    xkb_keymap *keymap = xkb_state_get_keymap(m_state.get());
    for (xkb_keycode_t code = xkb_keymap_min_keycode(keymap); code <= xkb_keymap_max_keycode(keymap);
         ++code) {
        const xkb_keysym_t *symbols = nullptr;
        if (xkb_keymap_key_get_syms_by_level(keymap, code, 0, 0, &symbols) == 1 && *symbols == symbol)
            return code;
    }
    qFatal("no key is called %s", qPrintable(name));
}

void WaylandUserKeyboard::set(std::uint32_t keycode, bool isDown)
{
    xkb_state_update_key(m_state.get(), keycode, isDown ? XKB_KEY_DOWN : XKB_KEY_UP);
    zwp_virtual_keyboard_v1_key(m_keyboard.get(), WaylandUserConnection::now(), keycode - kernelOffset,
                                isDown ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    const auto modifiers = [this](xkb_state_component component) {
        return xkb_state_serialize_mods(m_state.get(), component);
    };
    zwp_virtual_keyboard_v1_modifiers(m_keyboard.get(), modifiers(XKB_STATE_MODS_DEPRESSED),
                                      modifiers(XKB_STATE_MODS_LATCHED), modifiers(XKB_STATE_MODS_LOCKED), 0);
}

void WaylandUserKeyboard::press(const QString &combination)
{
    QList<std::uint32_t> keycodes;
    for (const QString &name : combination.split(u'+'))
        keycodes << keycodeOf(name);
    for (const std::uint32_t keycode : keycodes)
        set(keycode, true);
    for (const std::uint32_t keycode : std::views::reverse(keycodes))
        set(keycode, false);
    m_connection.roundTrip();
}
