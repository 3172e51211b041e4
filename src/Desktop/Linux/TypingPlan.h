// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"
#include "Desktop/Linux/KeyboardLayout.h"

// One key to press and release with these modifiers held.
struct PlannedKey
{
    std::uint8_t code = 0;
    ModifierKeys modifiers;
    bool endsStroke = false; // the pause follows
};

// Keys that can be typed with one setting of the spare keys.
struct TypingBatch
{
    QHash<std::uint8_t, std::uint32_t> spareSymbols; // key symbol by spare key code
    QList<PlannedKey> keys;
};

// How to type the strokes on this layout: what it lacks goes onto its spare keys, as many symbols at a time
// as there are. Line breaks are the Return key, tabs the Tab key. Throws PlatformError when a stroke cannot
// be typed. A pure function.
QList<TypingBatch> planTyping(const QList<KeyStroke> &strokes, const KeyboardLayout &layout);
