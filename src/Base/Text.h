// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// Text operations in terms of user-perceived characters (grapheme clusters). Comparison ignores letter case
// and Unicode encoding differences. Pure; any thread.
namespace Text {

// Removes white space and line breaks from both ends.
QString trimmed(const QString &text);

// Removes any of `characters` from both ends.
QString trimmed(const QString &text, QStringView characters);

// The key by which names and labels are compared: case-folded, canonically composed, without invisible
// characters. Texts that look the same apart from letter case have the same key.
QString comparisonKey(const QString &text);

// Compare by `comparisonKey`.
bool equals(const QString &left, const QString &right);
bool contains(const QString &text, const QString &part);

// The first `count` grapheme clusters.
QString firstCharacters(const QString &text, qsizetype count);

// Splits into consecutive pieces of `size` (at least 1) grapheme clusters; the last may be shorter. Empty for
// an empty text.
QStringList chunked(const QString &text, qsizetype size);

// Upper-cases the first letter of each word and lower-cases the rest. A word is a run of letters with their
// accents and apostrophes; any other character, digits included, ends it.
QString capitalized(const QString &text);

// Sanitises text from outside (window titles, names, labels, script results, platform messages): one line,
// without control characters, invisible formatting characters, Unicode tags, or anything a chat template
// could read as a marker. Visible text, emoji sequences included, is unchanged.
QString cleaned(const QString &foreign);

// The same for a text that may be absent.
std::optional<QString> cleaned(const std::optional<QString> &foreign);

// How line feeds and tabs of a displayed text are treated.
enum class Layout {
    OneLine, // replaced by visible marks, like other invisible characters
    Lines,   // kept as layout, as in a script
};

// The text as shown for approval: nothing is omitted, and every character that would be invisible (control
// characters, bidirectional controls, zero-width characters, tags) is replaced by a mark such as "⟨U+202E⟩".
// Joiners and selectors with a visible effect in their context stay. Does not change text from `cleaned`.
QString withVisibleMarks(const QString &text, Layout layout = Layout::OneLine);

// Removes characters that a person does not see but a model reads: bidirectional controls, zero-width
// characters, tags. Keeps those with a visible effect in their context, line breaks and tabs. A lone
// surrogate becomes U+FFFD.
QString withoutInvisible(const QString &text);

// Breaks every chat marker ("<|name|>", without white space in the name) with blanks; changes nothing else, a
// lone "<|" or "|>" included.
QString withoutMarkers(const QString &text);

} // namespace Text
