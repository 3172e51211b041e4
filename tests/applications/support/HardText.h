// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Text of every kind, to see whether it arrives unchanged.
namespace HardText {

// Punctuation, accents, Cyrillic, emoji with skin tones, line breaks, and 120 Chinese characters that no
// other round has. It neither begins nor ends with a line break.
QString ofRound(int round);

// Where two texts begin to differ, for a message that can be read.
QString difference(const QString &expected, const QString &actual);

} // namespace HardText
