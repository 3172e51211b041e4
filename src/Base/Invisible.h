// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>

// Which characters a person does not see. Decided by the properties that Unicode gives them, not by a list of
// known tricks. Pure functions, callable from any thread.
namespace Invisible {

// Whether the character has no picture of its own: bidirectional controls, zero-width characters, joiners,
// variation selectors, fillers, tags. Control characters and line breaks are none of these, and the signs
// that Arabic and other scripts put around numbers can be seen.
bool isInvisible(char32_t character);

// Whether the character at this place is invisible and does not show in what stands around it either, as does
// a joiner in a word of a script that is written with it or inside an emoji, or the selector behind an emoji.
// `text` is in UTF-32.
bool isHidden(const QList<uint> &text, qsizetype index);

// Line breaks of every kind, tabs and control characters.
bool isBreakOrControl(char32_t character);

} // namespace Invisible
