// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// How texts that quote the model come onto the screen: complete, and in the order in which they are meant.
// Pure functions.
namespace ShownText {

// On one line, with a visible mark for each character that could not be seen. In a sentence of ours, which
// runs from left to right, a quotation that runs from right to left moves nothing but itself.
QString line(const QString &text);

// The same for a text with lines and tabs of its own.
QString lines(const QString &text);

// The text with every stretch that runs from right to left kept from reordering what stands around it, by
// isolates (U+2068, U+2069). Quotation marks, brackets and dashes part one stretch from the next. A text that
// begins from right to left is not ours, and stays as it is.
QString inOrder(const QString &text);

} // namespace ShownText
