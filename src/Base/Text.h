// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// The text rules that people perceive: characters are grapheme clusters, comparison looks through letter case
// and through the different ways to encode the same letter. Pure functions, callable from any thread.
namespace Text {

// The text without white space and line breaks at both ends.
QString trimmed(const QString &text);

// The text without any of these characters at both ends.
QString trimmed(const QString &text, QStringView characters);

// The form in which names and labels are compared: case-folded, canonically composed and without any
// invisible character, so that two texts that look the same to a person (letter case aside) have the same
// key.
QString comparisonKey(const QString &text);

// Both as people perceive it: letter case and the encoding of accents do not matter.
bool equals(const QString &left, const QString &right);
bool contains(const QString &text, const QString &part);

// The first `count` user-perceived characters; a cluster of several code points is never cut.
QString firstCharacters(const QString &text, qsizetype count);

// Consecutive pieces of `size` (at least 1) user-perceived characters; the last may be shorter. Empty text:
// none.
QStringList chunked(const QString &text, qsizetype size);

// The first letter of every word in upper case, all others in lower case. A word is a run of letters, with
// the accents and apostrophes inside it; anything else, a digit included, ends it.
QString capitalized(const QString &text);

// Text that comes from outside (window titles, names, labels, script results, messages of the platform), made
// harmless: one line, no control or invisible formatting characters, no Unicode tags, and no shape that a
// chat template could read as a marker. Visible text, emoji sequences included, stays as it is.
QString cleaned(const QString &foreign);

// The same for a text that may be absent.
std::optional<QString> cleaned(const std::optional<QString> &foreign);

// What becomes of the line feeds and tabs of a text that is shown.
enum class Layout {
    OneLine, // they are marked like everything else that is not seen
    Lines,   // they lay the text out, as in a script
};

// The text as it is shown to whoever has to approve it: nothing is left out, and whatever could not be seen
// in it (control characters, bidirectional controls, zero-width characters, tags, ...) stands there as a
// visible mark, "⟨U+202E⟩". Invisible characters that do show in what stands around them stay: joiners in the
// words of scripts that need them and in emoji. What is cleaned needs no mark.
QString withVisibleMarks(const QString &text, Layout layout = Layout::OneLine);

// Drops what a person does not see but a model does: bidirectional controls, zero-width characters, tags.
// What shows in its context, line breaks and tabs stay; a lone surrogate becomes the replacement character.
QString withoutInvisible(const QString &text);

// Breaks every chat-marker shape ("<|name|>", the name in one word) by blanks, and changes nothing else: a
// lone "<|" or "|>" stays.
QString withoutMarkers(const QString &text);

} // namespace Text
