// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>

// Which characters are invisible to a person, decided by their Unicode properties rather than by a list of
// known tricks. Pure; any thread.
namespace Invisible {

// Whether the character has no glyph of its own: bidirectional controls, zero-width characters, joiners,
// variation selectors, fillers, tags. False for control characters, line breaks, and the visible number signs
// of Arabic and other scripts.
bool isInvisible(char32_t character);

// Whether the character at `index` is invisible and has no visible effect in its context. ZWJ and ZWNJ do
// have one in scripts that use them and in emoji sequences, as does a variation selector after an emoji.
// `text` is UTF-32.
bool isHidden(const QList<uint> &text, qsizetype index);

// Line breaks of any kind, tabs and control characters.
bool isBreakOrControl(char32_t character);

} // namespace Invisible
