// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"

// Splits the text of key strokes to fit into macOS keyboard events. Pure functions, independent of macOS.
namespace TypedText {

// macOS silently drops an event's text beyond this many UTF-16 units.
inline constexpr qsizetype mostUnits = 20;

// Splits strokes with longer texts into several, between grapheme clusters; a cluster that doesn't fit is
// split between code points.
QList<KeyStroke> fitted(const QList<KeyStroke> &strokes);

} // namespace TypedText
