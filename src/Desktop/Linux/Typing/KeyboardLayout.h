// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFlags>
#include <QHash>
#include <QList>

#include <cstdint>
#include <optional>

// The modifier keys that this platform has for ours.
enum class ModifierKey : std::uint8_t {
    Shift = 1,
    Control = 2,
    Alternate = 4,
    ThirdLevel = 8, // AltGr
};
Q_DECLARE_FLAGS(ModifierKeys, ModifierKey)
Q_DECLARE_OPERATORS_FOR_FLAGS(ModifierKeys)

// What the keyboard types in the group (language) that is switched on, with no lock on. A plain value.
struct KeyboardLayout
{
    // A key, and the modifiers to hold for the wanted symbol.
    struct Key
    {
        std::uint8_t code = 0;
        ModifierKeys modifiers;
    };

    QHash<std::uint32_t, Key> symbols; // by key symbol
    QHash<char32_t, Key> characters;   // by the character that the symbol types
    // By key symbol: the keys that have it, without modifiers, in a group that is not switched on.
    QHash<std::uint32_t, std::uint8_t> otherGroups;
    QHash<ModifierKey, std::uint8_t> modifierCodes;
    QList<std::uint8_t> spareCodes; // keys without any symbol, free to be given one
    std::uint8_t groupCount = 1;
};
