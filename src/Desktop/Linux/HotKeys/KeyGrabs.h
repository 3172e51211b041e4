// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/HotKeys.h"

#include <QList>

#include <cstdint>

// The X server's keyboard as its core protocol tells it. Values only.
struct CoreKeyboard
{
    std::uint8_t firstCode = 8;
    qsizetype symbolsPerCode = 0;
    QList<std::uint32_t> symbols; // the first code's, then the next one's
    // The codes of the modifier keys: as many for each of Shift, Lock, Control, Mod1 to Mod5; 0 is no key.
    QList<std::uint8_t> modifierCodes;

    friend bool operator==(const CoreKeyboard &, const CoreKeyboard &) = default;

    // The modifiers that a key with one of these symbols switches, as bits.
    std::uint16_t modifiersOf(std::initializer_list<std::uint32_t> wanted) const;
    // The key that types the symbol by itself, else one that types it at all; 0 when there is none.
    std::uint8_t codeOf(std::uint32_t symbol) const;
    bool hasSymbol(std::uint8_t code, std::uint32_t symbol) const;
};

// What to grab so that a key with modifiers reaches us whatever locks are on.
struct KeyGrabs
{
    std::uint8_t code = 0;                     // none when the keyboard lacks the key or a modifier
    std::uint16_t modifiers = 0;               // as bits
    std::uint16_t locks = 0;                   // the bits of Caps, Num and Scroll Lock
    QList<std::uint16_t> combinations() const; // of the modifiers with any of the locks; the plain one first

    bool isMadeBy(std::uint8_t pressedCode, std::uint16_t state) const;

    friend bool operator==(const KeyGrabs &, const KeyGrabs &) = default;

    // Option is the Alt key; Command and Control are both the Control key.
    static KeyGrabs find(const CoreKeyboard &keyboard, std::uint32_t symbol, HotKeyModifiers modifiers);
};
