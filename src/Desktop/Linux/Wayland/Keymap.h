// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Typing/KeyboardLayout.h"

#include <QByteArray>

// The keymap of the virtual keyboard: the US layout, whatever the user's layout is. Keycodes are those of
// XKB, the kernel's plus 8. Pure functions.
namespace WaylandKeymap {

// All keys of the keymap. The spare keys are those that type a character, since applications such as Chromium
// also read keycodes and would take a function key for a command.
const KeyboardLayout &layout();

// The keymap in XKB's text format. The keys in `lentSymbols` (keysym by keycode) type these keysyms instead
// of their own.
QByteArray text(const QHash<std::uint8_t, std::uint32_t> &lentSymbols);

} // namespace WaylandKeymap
