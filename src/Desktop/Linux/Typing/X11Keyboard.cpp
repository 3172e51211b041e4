// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/X11Keyboard.h"

#include "Desktop/Linux/Typing/X11LayoutReader.h"
#include "Desktop/Linux/Typing/XtestKeyboard.h"
#include "Desktop/Linux/X11/Xkb.h"

#include <xcb/xtest.h>

namespace {

// The master keyboard: applications see its modifiers, locks and group, whichever slave device a key comes
// from.
constexpr std::uint16_t masterKeyboard = XCB_XKB_ID_USE_CORE_KBD;
constexpr std::uint8_t capsLock = XCB_MOD_MASK_LOCK;
constexpr std::uint8_t numLock = XCB_MOD_MASK_2;

} // namespace

struct X11Keyboard::State
{
    std::uint8_t held, locked, latched, group;
};

X11Keyboard::X11Keyboard(X11Connection &connection)
    : m_connection(connection), m_layoutNamesAtom(connection.internAtom("_XKB_RULES_NAMES")),
      m_device(findXtestKeyboard(connection)), m_symbols(connection, m_device)
{
}

X11Keyboard::~X11Keyboard()
{
    for (const std::uint8_t code : std::as_const(m_held))
        sendKey(XCB_KEY_RELEASE, code);
    if (m_releasedLocks)
        lockModifiers(m_releasedLocks, m_releasedLocks);
    xcb_flush(m_connection.get());
}

X11Keyboard::State X11Keyboard::state() const
{
    const auto cookie = xcb_xkb_get_state(m_connection.get(), masterKeyboard);
    const X11Reply<xcb_xkb_get_state_reply_t> reply(
        xcb_xkb_get_state_reply(m_connection.get(), cookie, nullptr));
    m_connection.requireAlive();
    if (!reply)
        failWithoutKeyboard();
    return {reply->baseMods, reply->lockedMods, reply->latchedMods, reply->group};
}

// Programs that load a keymap store its layout names in this property.
QByteArray X11Keyboard::layoutNames() const
{
    const auto names = m_connection.property(m_connection.root(), m_layoutNamesAtom);
    return names ? names->bytes : QByteArray();
}

bool X11Keyboard::hasLayoutChanged() const
{
    return state().group % m_groupCount != m_group || layoutNames() != m_layoutNames;
}

bool X11Keyboard::isModifierHeld() const
{
    return (state().held & ~(capsLock | numLock)) != 0;
}

KeyboardLayout X11Keyboard::layout()
{
    m_layoutNames = layoutNames();
    const std::uint8_t group = state().group;
    const KeyboardLayout layout = readLayout(m_connection, m_device, group);
    // The first key gives the master keyboard this device's keymap, which may have fewer groups.
    m_groupCount = layout.groupCount;
    m_group = group % m_groupCount;
    return layout;
}

void X11Keyboard::lockModifiers(std::uint8_t affected, std::uint8_t locked)
{
    xcb_xkb_latch_lock_state(m_connection.get(), masterKeyboard, affected, locked, 0, 0, 0, 0, 0);
}

void X11Keyboard::releaseLocks()
{
    const State present = state();
    // Num Lock affects only the keypad, which is never used.
    m_releasedLocks = present.locked & std::uint8_t(~numLock);
    if (m_releasedLocks)
        lockModifiers(m_releasedLocks, 0);
    if (present.latched)
        xcb_xkb_latch_lock_state(m_connection.get(), masterKeyboard, 0, 0, 0, 0, present.latched, 0, 0);
}

void X11Keyboard::takeBackAbandonedSymbols()
{
    m_symbols.takeBackAbandoned();
}

void X11Keyboard::lendSymbols(const QHash<std::uint8_t, std::uint32_t> &symbols)
{
    m_symbols.lend(symbols);
}

void X11Keyboard::sendKey(std::uint8_t type, std::uint8_t code)
{
    xcb_test_fake_input(m_connection.get(), type, code, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

void X11Keyboard::flush()
{
    xcb_flush(m_connection.get());
}

void X11Keyboard::press(std::uint8_t code)
{
    m_connection.requireAlive();
    m_held.insert(code);
    sendKey(XCB_KEY_PRESS, code);
}

void X11Keyboard::release(std::uint8_t code)
{
    sendKey(XCB_KEY_RELEASE, code);
    m_held.remove(code);
}
