// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"
#include "Desktop/Linux/Typing/KeyboardLayout.h"

// One key to press and release with these modifiers held.
struct PlannedKey
{
    std::uint8_t code = 0;
    ModifierKeys modifiers;
    bool endsStroke = false; // the pause follows
};

// Keys that can be typed with the same symbols lent to keys.
struct TypingBatch
{
    QHash<std::uint8_t, std::uint32_t> lentSymbols; // key symbol by key code
    QList<PlannedKey> keys;
};

// How to type the strokes on this layout: what it lacks is lent to its spare keys, as many symbols at a time
// as there are. Line breaks are the Return key, tabs the Tab key.
//
// With Control or Alternate, a letter of another group and a digit that needs Shift (as on AZERTY) go to the
// key that bears them, lent the symbol alone: so an application gets Control+1, neither Control+& nor
// Control+Shift+1, by the key as well as by the symbol. Throws PlatformError when a stroke cannot be typed.
// A pure function.
QList<TypingBatch> planTyping(const QList<KeyStroke> &strokes, const KeyboardLayout &layout);
