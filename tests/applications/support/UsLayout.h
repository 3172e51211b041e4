// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

#include <cstdint>

struct xkb_keymap;

// The US keyboard layout. Thread: main.
namespace UsLayout {

// Valid for the whole program.
xkb_keymap *keymap();

// The kernel's codes of the keys of a combination in xdotool's notation ("ctrl+l"), in that order.
QList<std::uint32_t> keysOf(const QString &combination);

} // namespace UsLayout
