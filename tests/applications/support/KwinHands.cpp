// SPDX-License-Identifier: Apache-2.0
#include "applications/support/KwinHands.h"

#include "Support/Awaited.h"

#include <fake-input-client-protocol.h>

KwinHands::KwinHands()
    : m_keys(m_connection.bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, 5))
{
    org_kde_kwin_fake_input_authenticate(m_keys, "test", "");
    Awaited::result(m_connection.roundTrip());
}

KwinHands::~KwinHands()
{
    org_kde_kwin_fake_input_destroy(m_keys);
    m_connection.flush();
}

void KwinHands::strike(std::uint32_t code)
{
    press(code);
    release(code);
}

void KwinHands::send(std::uint32_t code, std::uint32_t state)
{
    org_kde_kwin_fake_input_keyboard_key(m_keys, code, state);
    Awaited::result(m_connection.roundTrip());
}
