// SPDX-License-Identifier: Apache-2.0
// Any text is cleaned to one harmless line, and never split within a character.
#include "Fuzzing.h"

#include "Base/Text.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = textOf(data, size);
    const QString cleaned = Text::cleaned(text);
    require(isOneLine(cleaned));
    require(!holdsMarker(cleaned));
    require(Text::cleaned(cleaned) == cleaned);
    require(Text::withVisibleMarks(cleaned) == cleaned);
    require(isOneLine(Text::withVisibleMarks(text)));
    require(Text::withoutInvisible(Text::withVisibleMarks(text)) == Text::withVisibleMarks(text));
    require(Text::withoutMarkers(text).remove(u' ') == QString(text).remove(u' '));
    require(holdsMarker(text) || Text::withoutMarkers(text) == text);

    const QStringList pieces = Text::chunked(text, 20);
    require(pieces.join(QString()) == text);
    require(pieces.isEmpty() || Text::firstCharacters(text, 20) == pieces.first());
    require(Text::equals(text, text) && Text::contains(text, text));
    require(Text::comparisonKey(Text::comparisonKey(text)) == Text::comparisonKey(text));
    Text::capitalized(text);
    return 0;
}
