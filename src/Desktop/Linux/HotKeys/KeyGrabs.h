// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell/HotKeys.h"

#include <QList>

#include <cstdint>

// The core keyboard's keysyms and modifier map. A plain value.
struct CoreKeyboard
{
    std::uint8_t firstCode = 8;
    qsizetype symbolsPerCode = 0;
    QList<std::uint32_t> symbols; // all keysyms of the first keycode, then of the next
    // The modifier map: equally many keycodes for each of Shift, Lock, Control and Mod1 to Mod5; 0 is unused.
    QList<std::uint8_t> modifierCodes;

    friend bool operator==(const CoreKeyboard &, const CoreKeyboard &) = default;

    // The mask of the modifiers mapped to keys with any of these keysyms.
    std::uint16_t modifiersOf(std::initializer_list<std::uint32_t> wanted) const;
    // The keycode that has the keysym unmodified, or else at any level; 0 if none.
    std::uint8_t codeOf(std::uint32_t symbol) const;
    bool hasSymbol(std::uint8_t code, std::uint32_t symbol) const;
};

// The key grabs for a hot key, independent of locks.
struct KeyGrabs
{
    std::uint8_t code = 0;                     // 0 if the keyboard lacks the key or a modifier
    std::uint16_t modifiers = 0;               // mask
    std::uint16_t locks = 0;                   // mask of Caps, Num and Scroll Lock
    QList<std::uint16_t> combinations() const; // modifiers with every subset of locks; first without any

    bool isMadeBy(std::uint8_t pressedCode, std::uint16_t state) const;

    friend bool operator==(const KeyGrabs &, const KeyGrabs &) = default;

    // Option is the Alt key; Command and Control are both the Control key.
    static KeyGrabs find(const CoreKeyboard &keyboard, std::uint32_t symbol, HotKeyModifiers modifiers);
};
