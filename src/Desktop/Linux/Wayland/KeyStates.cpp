// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/KeyStates.h"

#include <algorithm>
#include <array>

#include <keystate-client-protocol.h>

namespace {

constexpr std::uint32_t version = 5; // from 5 on it knows the modifiers

} // namespace

// The protocol's callback.
struct KeyStates::Listener
{
    static void changed(void *data, org_kde_kwin_keystate *, std::uint32_t key, std::uint32_t state)
    {
        static_cast<KeyStates *>(data)->m_states.insert(key, state);
    }

    static constexpr org_kde_kwin_keystate_listener keyState{&changed};
};

bool KeyStates::isOfferedBy(const WaylandConnection &connection)
{
    return connection.offers(org_kde_kwin_keystate_interface, version);
}

KeyStates::KeyStates(WaylandConnection &connection)
    : m_connection(connection),
      m_keyState(connection.bind<org_kde_kwin_keystate>(org_kde_kwin_keystate_interface, version))
{
    org_kde_kwin_keystate_add_listener(m_keyState, &Listener::keyState, this);
}

KeyStates::~KeyStates()
{
    org_kde_kwin_keystate_destroy(m_keyState);
}

QCoro::Task<void> KeyStates::update()
{
    org_kde_kwin_keystate_fetchStates(m_keyState);
    return m_connection.roundTrip();
}

bool KeyStates::isModifierHeld() const
{
    constexpr std::array modifiers{ORG_KDE_KWIN_KEYSTATE_KEY_ALT, ORG_KDE_KWIN_KEYSTATE_KEY_CONTROL,
                                   ORG_KDE_KWIN_KEYSTATE_KEY_SHIFT, ORG_KDE_KWIN_KEYSTATE_KEY_META,
                                   ORG_KDE_KWIN_KEYSTATE_KEY_ALTGR};
    return std::any_of(modifiers.begin(), modifiers.end(), [this](std::uint32_t key) {
        return m_states.value(key) != ORG_KDE_KWIN_KEYSTATE_STATE_UNLOCKED;
    });
}

bool KeyStates::isCapsLockOn() const
{
    return m_states.value(ORG_KDE_KWIN_KEYSTATE_KEY_CAPSLOCK) != ORG_KDE_KWIN_KEYSTATE_STATE_UNLOCKED;
}
