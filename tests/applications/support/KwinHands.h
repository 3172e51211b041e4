// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Wayland/Connection.h"

#include <cstdint>

struct org_kde_kwin_fake_input;

// A keyboard of the user on a private desktop with KWin. This program must be permitted. Thread: main.
class KwinHands
{
public:
    KwinHands();
    ~KwinHands();
    KwinHands(const KwinHands &) = delete;
    KwinHands &operator=(const KwinHands &) = delete;

    // Keys are given by the kernel's codes, such as KEY_LEFTSHIFT. Each returns once KWin has handled it.
    void press(std::uint32_t code) { send(code, WL_KEYBOARD_KEY_STATE_PRESSED); }
    void release(std::uint32_t code) { send(code, WL_KEYBOARD_KEY_STATE_RELEASED); }
    void strike(std::uint32_t code);

private:
    void send(std::uint32_t code, std::uint32_t state);

    WaylandConnection m_connection;
    org_kde_kwin_fake_input *m_keys = nullptr;
};
