// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"

// Makes the text of key strokes fit into the keyboard events of macOS. Pure functions. Takes nothing of
// macOS.
namespace TypedText {

// The most UTF-16 units that arrive of one event's text; macOS drops the others and says nothing.
inline constexpr qsizetype mostUnits = 20;

// The same strokes, those with a longer text as several. A text is divided between characters as the user
// sees them; one that does not fit as a whole, between code points.
QList<KeyStroke> fitted(const QList<KeyStroke> &strokes);

} // namespace TypedText
