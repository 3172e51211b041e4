// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"
#include "Desktop/Linux/Typing/KeyboardLayout.h"

// A key to press and release while these modifiers are held.
struct PlannedKey
{
    std::uint8_t code = 0;
    ModifierKeys modifiers;
    bool endsStroke = false; // the pause follows
};

// Keys that can be typed with one assignment of lent keysyms.
struct TypingBatch
{
    QHash<std::uint8_t, std::uint32_t> lentSymbols; // keysym by keycode
    QList<PlannedKey> keys;
};

// Plans how to type the strokes on this layout. Missing keysyms are lent to the spare keys, in batches of at
// most as many. Line breaks become Return, tabs become Tab.
//
// With Control or Alternate, a letter of another group or a digit that needs Shift (as on AZERTY) is typed
// with its own key, which is lent that single keysym: the application then sees Control+1 by keycode and
// keysym, rather than Control+& or Control+Shift+1. Throws PlatformError if a stroke can't be typed. A pure
// function.
QList<TypingBatch> planTyping(const QList<KeyStroke> &strokes, const KeyboardLayout &layout);

// The keycodes to press in this order, and to release in reverse: those of the modifiers, then the key's.
QList<std::uint8_t> codesOf(const PlannedKey &key, const KeyboardLayout &layout);

// Whether the character is typed as Return.
bool isLineBreak(char32_t character);

// Throws PlatformError if no key types the character in any layout.
void requireTypable(char32_t character);
