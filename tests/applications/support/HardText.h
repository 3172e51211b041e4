// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Texts that are hard to type.
namespace HardText {

// Punctuation, accents, Cyrillic, emoji with skin tones, line breaks, and 120 Chinese characters unique to
// the round. Neither starts nor ends with a line break.
QString ofRound(int round);

// Describes the first difference between two texts.
QString difference(const QString &expected, const QString &actual);

} // namespace HardText
