// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFlags>
#include <QHash>
#include <QList>

#include <cstdint>
#include <optional>

// The modifier keys used for typing.
enum class ModifierKey : std::uint8_t {
    Shift = 1,
    Control = 2,
    Alternate = 4,
    ThirdLevel = 8, // AltGr
};
Q_DECLARE_FLAGS(ModifierKeys, ModifierKey)
Q_DECLARE_OPERATORS_FOR_FLAGS(ModifierKeys)

// What the keyboard types in the active group (language), with all locks off. A plain value.
struct KeyboardLayout
{
    // A key and the modifiers that select the keysym.
    struct Key
    {
        std::uint8_t code = 0;
        ModifierKeys modifiers;
    };

    QHash<std::uint32_t, Key> symbols; // by keysym
    QHash<char32_t, Key> characters;   // by the character that the keysym types
    // By keysym: keys that have it unmodified, in an inactive group.
    QHash<std::uint32_t, std::uint8_t> otherGroups;
    QHash<ModifierKey, std::uint8_t> modifierCodes;
    QList<std::uint8_t> spareCodes; // keycodes without any keysym
    std::uint8_t groupCount = 1;
};
