// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/HotKeys/KeyGrabs.h"

#include <xcb/xproto.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>

namespace {

constexpr int modifierCount = 8;
constexpr std::uint16_t everyModifier = 0xFF; // the higher bits are pointer buttons and the group

} // namespace

bool CoreKeyboard::hasSymbol(std::uint8_t code, std::uint32_t symbol) const
{
    const qsizetype first = (qsizetype(code) - firstCode) * symbolsPerCode;
    if (first < 0 || first + symbolsPerCode > symbols.size())
        return false;
    const auto begin = symbols.cbegin() + first;
    return std::find(begin, begin + symbolsPerCode, symbol) != begin + symbolsPerCode;
}

std::uint16_t CoreKeyboard::modifiersOf(std::initializer_list<std::uint32_t> wanted) const
{
    std::uint16_t bits = 0;
    const qsizetype codesPerModifier = modifierCodes.size() / modifierCount;
    for (qsizetype i = 0; i < codesPerModifier * modifierCount; ++i) {
        const std::uint8_t code = modifierCodes[i];
        const auto isWanted = [this, code](std::uint32_t symbol) { return hasSymbol(code, symbol); };
        if (code != 0 && std::any_of(wanted.begin(), wanted.end(), isWanted))
            bits = std::uint16_t(bits | 1u << (i / codesPerModifier));
    }
    return bits;
}

std::uint8_t CoreKeyboard::codeOf(std::uint32_t symbol) const
{
    for (qsizetype i = 0; symbolsPerCode > 0 && i + symbolsPerCode <= symbols.size(); i += symbolsPerCode) {
        if (symbols[i] == symbol)
            return std::uint8_t(firstCode + i / symbolsPerCode);
    }
    const qsizetype any = symbols.indexOf(symbol);
    return any < 0 ? std::uint8_t(0) : std::uint8_t(firstCode + any / symbolsPerCode);
}

KeyGrabs KeyGrabs::find(const CoreKeyboard &keyboard, std::uint32_t symbol, HotKeyModifiers modifiers)
{
    KeyGrabs grabs;
    if (modifiers & HotKeyModifier::Shift)
        grabs.modifiers |= XCB_MOD_MASK_SHIFT;
    if (modifiers & (HotKeyModifier::Command | HotKeyModifier::Control))
        grabs.modifiers |= XCB_MOD_MASK_CONTROL;
    if (modifiers & HotKeyModifier::Option) {
        // The Lock and Control modifiers never count as Alt, even if a keymap puts Alt keysyms there.
        const std::uint16_t alternate =
            keyboard.modifiersOf({XKB_KEY_Alt_L, XKB_KEY_Alt_R}) &
            (XCB_MOD_MASK_1 | XCB_MOD_MASK_2 | XCB_MOD_MASK_3 | XCB_MOD_MASK_4 | XCB_MOD_MASK_5);
        if (alternate == 0)
            return {};
        // Left and right Alt may be different modifiers; the left one is usually on the lower.
        grabs.modifiers |= alternate & std::uint16_t(-alternate);
    }
    grabs.code = keyboard.codeOf(symbol);
    if (grabs.code == 0)
        return {};
    grabs.locks =
        std::uint16_t(XCB_MOD_MASK_LOCK | keyboard.modifiersOf({XKB_KEY_Num_Lock, XKB_KEY_Scroll_Lock}));
    grabs.locks &= std::uint16_t(~grabs.modifiers);
    return grabs;
}

QList<std::uint16_t> KeyGrabs::combinations() const
{
    QList<std::uint16_t> result;
    if (code == 0)
        return result;
    // Enumerates all subsets of `locks`.
    std::uint16_t subset = 0;
    do {
        result.append(modifiers | subset);
        subset = std::uint16_t((subset - locks) & locks);
    } while (subset != 0);
    return result;
}

bool KeyGrabs::isMadeBy(std::uint8_t pressedCode, std::uint16_t state) const
{
    return code != 0 && code == pressedCode && (state & everyModifier & ~locks) == modifiers;
}
