// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Typing/X11Keyboard.h"

// Simulates a user typing on the X server of $DISPLAY. Keys are given by keysym.
class Hands
{
public:
    // Presses and releases a key with modifiers.
    void strike(std::uint32_t symbol, const QList<std::uint32_t> &modifiers = {})
    {
        for (const std::uint32_t each : modifiers)
            down(each);
        down(symbol);
        up(symbol);
        for (const std::uint32_t each : modifiers)
            up(each);
    }

    void down(std::uint32_t symbol) { m_keyboard.press(codeOf(symbol)); }
    void up(std::uint32_t symbol) { m_keyboard.release(codeOf(symbol)); }
    bool has(std::uint32_t symbol) { return m_keyboard.layout().symbols.contains(symbol); }

private:
    std::uint8_t codeOf(std::uint32_t symbol) { return m_keyboard.layout().symbols.value(symbol).code; }

    X11Connection m_connection;
    X11Keyboard m_keyboard{m_connection};
};
