// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/HotKeys/X11HotKeys.h"

#include "Desktop/Linux/X11/Xkb.h"

#include <xkbcommon/xkbcommon-x11.h>

namespace {

constexpr std::uint16_t coreKeyboard = XCB_XKB_ID_USE_CORE_KBD;
constexpr std::uint16_t keyboardEvents =
    XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
constexpr std::uint16_t mapParts =
    XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_KEY_TYPES;

} // namespace

// Without detectable auto-repeat, a held key looks like repeated releases and presses.
bool X11HotKeys::prepare()
{
    if (m_isPrepared)
        return true;
    const int set = xkb_x11_setup_xkb_extension(
        m_connection.get(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
        XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &m_firstXkbEvent, nullptr);
    if (!set)
        return false;
    constexpr std::uint32_t repetition = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto cookie =
        xcb_xkb_per_client_flags(m_connection.get(), coreKeyboard, repetition, repetition, 0, 0, 0);
    const X11Reply<xcb_xkb_per_client_flags_reply_t> flags(
        xcb_xkb_per_client_flags_reply(m_connection.get(), cookie, nullptr));
    xcb_xkb_select_events(m_connection.get(), coreKeyboard, keyboardEvents, 0, keyboardEvents, mapParts,
                          mapParts, nullptr);
    m_isPrepared = flags && (flags->value & repetition);
    return m_isPrepared;
}

CoreKeyboard X11HotKeys::keyboard() const
{
    xcb_connection_t *x = m_connection.get();
    const xcb_setup_t *setup = xcb_get_setup(x);
    const auto count = std::uint8_t(setup->max_keycode - setup->min_keycode + 1);
    const auto symbolsCookie = xcb_get_keyboard_mapping(x, setup->min_keycode, count);
    const auto modifiersCookie = xcb_get_modifier_mapping(x);
    const X11Reply<xcb_get_keyboard_mapping_reply_t> symbols(
        xcb_get_keyboard_mapping_reply(x, symbolsCookie, nullptr));
    const X11Reply<xcb_get_modifier_mapping_reply_t> modifiers(
        xcb_get_modifier_mapping_reply(x, modifiersCookie, nullptr));
    CoreKeyboard result;
    if (!symbols || !modifiers)
        return result;
    result.firstCode = setup->min_keycode;
    result.symbolsPerCode = symbols->keysyms_per_keycode;
    const xcb_keysym_t *first = xcb_get_keyboard_mapping_keysyms(symbols.get());
    result.symbols =
        QList<std::uint32_t>(first, first + xcb_get_keyboard_mapping_keysyms_length(symbols.get()));
    const xcb_keycode_t *code = xcb_get_modifier_mapping_keycodes(modifiers.get());
    result.modifierCodes =
        QList<std::uint8_t>(code, code + xcb_get_modifier_mapping_keycodes_length(modifiers.get()));
    return result;
}

bool X11HotKeys::grab(const KeyGrabs &grabs) const
{
    QList<xcb_void_cookie_t> cookies;
    for (const std::uint16_t modifiers : grabs.combinations())
        cookies.append(xcb_grab_key_checked(m_connection.get(), 0, m_connection.root(), modifiers, grabs.code,
                                            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    bool isOurs = !cookies.isEmpty();
    for (const xcb_void_cookie_t cookie : std::as_const(cookies)) {
        const X11Reply<xcb_generic_error_t> refusal(xcb_request_check(m_connection.get(), cookie));
        isOurs = isOurs && !refusal;
    }
    // If any combination is refused, another program owns the key.
    if (!isOurs)
        ungrab(grabs);
    return isOurs;
}

void X11HotKeys::ungrab(const KeyGrabs &grabs) const
{
    for (const std::uint16_t modifiers : grabs.combinations())
        xcb_ungrab_key(m_connection.get(), grabs.code, m_connection.root(), modifiers);
    xcb_flush(m_connection.get());
}

bool X11HotKeys::add(int number, HotKey hotKey)
{
    m_connection.requireAlive();
    if (!prepare())
        return false;
    const KeyGrabs grabs = KeyGrabs::find(keyboard(), hotKey.symbol, hotKey.modifiers);
    const bool isOurs = grab(grabs);
    m_connection.requireAlive();
    if (isOurs)
        m_entries.insert(number, {std::move(hotKey), grabs});
    return isOurs;
}

void X11HotKeys::remove(int number)
{
    const auto entry = m_entries.constFind(number);
    if (entry == m_entries.constEnd())
        return;
    ungrab(entry->grabs);
    m_entries.erase(entry);
}

void X11HotKeys::grabAgain()
{
    const CoreKeyboard now = keyboard();
    for (Entry &entry : m_entries) {
        const KeyGrabs grabs = KeyGrabs::find(now, entry.hotKey.symbol, entry.hotKey.modifiers);
        if (grabs == entry.grabs)
            continue;
        ungrab(entry.grabs);
        entry.grabs = grab(grabs) ? grabs : KeyGrabs();
    }
}

void X11HotKeys::handlePress(const xcb_key_press_event_t &event)
{
    if (m_held.contains(event.detail))
        return;
    m_held.insert(event.detail);
    for (const Entry &entry : std::as_const(m_entries)) {
        if (entry.grabs.isMadeBy(event.detail, event.state))
            entry.hotKey.pressed();
    }
}

void X11HotKeys::handle(const xcb_generic_event_t &event)
{
    if (m_entries.isEmpty())
        return;
    const int type = event.response_type & 0x7F;
    if (type == XCB_KEY_PRESS)
        handlePress(reinterpret_cast<const xcb_key_press_event_t &>(event));
    else if (type == XCB_KEY_RELEASE)
        m_held.remove(reinterpret_cast<const xcb_key_release_event_t &>(event).detail);
    else if (type == XCB_MAPPING_NOTIFY || type == m_firstXkbEvent)
        grabAgain();
}
