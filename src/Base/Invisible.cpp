// SPDX-License-Identifier: Apache-2.0
#include "Base/Invisible.h"

#include <QChar>

#include <algorithm>
#include <array>

namespace {

struct Range
{
    char32_t first;
    char32_t last;
};

template <std::size_t Count>
bool isInside(const std::array<Range, Count> &ranges, char32_t character)
{
    return std::any_of(ranges.begin(), ranges.end(), [character](const Range &range) {
        return character >= range.first && character <= range.last;
    });
}

// Format characters (Cf) with a visible glyph: signs that enclose or span the characters after them, and
// hieroglyph layout controls.
constexpr std::array visibleFormats{
    Range{0x0600, 0x0605}, Range{0x06DD, 0x06DD},   Range{0x070F, 0x070F},   Range{0x0890, 0x0891},
    Range{0x08E2, 0x08E2}, Range{0x110BD, 0x110BD}, Range{0x110CD, 0x110CD}, Range{0x13430, 0x1343F},
};

// Default_Ignorable_Code_Point characters that are not format characters: the combining grapheme joiner,
// fillers, variation selectors, and reserved code points.
constexpr std::array otherIgnorables{
    Range{0x034F, 0x034F}, Range{0x115F, 0x1160},   Range{0x17B4, 0x17B5}, Range{0x180B, 0x180F},
    Range{0x2065, 0x2065}, Range{0x3164, 0x3164},   Range{0xFE00, 0xFE0F}, Range{0xFFA0, 0xFFA0},
    Range{0xFFF0, 0xFFF8}, Range{0xE0000, 0xE0FFF},
};

// Ranges that contain the characters drawn as emoji, alone or in a sequence.
constexpr std::array pictographs{
    Range{0x00A9, 0x00A9},   Range{0x00AE, 0x00AE}, Range{0x203C, 0x203C}, Range{0x2049, 0x2049},
    Range{0x2122, 0x2122},   Range{0x2139, 0x2139}, Range{0x2190, 0x21FF}, Range{0x2300, 0x23FF},
    Range{0x24C2, 0x24C2},   Range{0x25A0, 0x27BF}, Range{0x2900, 0x297F}, Range{0x2B00, 0x2BFF},
    Range{0x3030, 0x3030},   Range{0x303D, 0x303D}, Range{0x3297, 0x3297}, Range{0x3299, 0x3299},
    Range{0x1F000, 0x1FAFF},
};

constexpr std::array mongolianSelectors{Range{0x180B, 0x180F}};

constexpr char32_t zeroWidthNonJoiner = 0x200C;
constexpr char32_t zeroWidthJoiner = 0x200D;
constexpr char32_t textSelector = 0xFE0E;
constexpr char32_t emojiSelector = 0xFE0F;
constexpr char32_t keycap = 0x20E3;
constexpr int combiningClassOfViramas = 9;

// Returns 0 outside the text; U+0000 has none of the properties tested here.
char32_t characterAt(const QList<uint> &text, qsizetype index)
{
    return index >= 0 && index < text.size() ? text.at(index) : 0;
}

bool isVirama(char32_t character)
{
    return QChar::combiningClass(character) == combiningClassOfViramas;
}

// The preceding base character, skipping nonspacing marks.
char32_t baseBefore(const QList<uint> &text, qsizetype index)
{
    const auto isAccent = [](char32_t character) {
        return QChar::category(character) == QChar::Mark_NonSpacing && !Invisible::isInvisible(character);
    };
    --index;
    while (isAccent(characterAt(text, index)))
        --index;
    return characterAt(text, index);
}

bool isCursive(char32_t character)
{
    return QChar::isLetter(character) && QChar::joiningType(character) != QChar::Joining_None;
}

// In cursive scripts ZWNJ separates letters that would join; in Indic scripts it keeps a virama visible.
bool nonJoinerShows(const QList<uint> &text, qsizetype index)
{
    if (isVirama(characterAt(text, index - 1)))
        return true;
    const char32_t before = baseBefore(text, index);
    const char32_t after = characterAt(text, index + 1);
    return isCursive(after) && QChar::isLetterOrNumber(before) &&
           QChar::script(before) == QChar::script(after);
}

bool joinsEmoji(const QList<uint> &text, qsizetype index)
{
    const bool hasSelector = characterAt(text, index - 1) == emojiSelector;
    return isInside(pictographs, characterAt(text, hasSelector ? index - 2 : index - 1)) &&
           isInside(pictographs, characterAt(text, index + 1));
}

// ZWJ forms emoji sequences, half and conjunct letters around a virama, and the joining form of a final
// letter.
bool joinerShows(const QList<uint> &text, qsizetype index)
{
    const char32_t before = characterAt(text, index - 1);
    const bool precedesVirama = QChar::isLetter(before) && isVirama(characterAt(text, index + 1));
    return joinsEmoji(text, index) || isVirama(before) || precedesVirama ||
           isCursive(baseBefore(text, index));
}

bool selectorShows(const QList<uint> &text, qsizetype index)
{
    const char32_t before = characterAt(text, index - 1);
    if (isInside(pictographs, before))
        return true;
    const bool isOnKeycap = (before >= U'0' && before <= U'9') || before == U'#' || before == U'*';
    return isOnKeycap && characterAt(text, index + 1) == keycap;
}

// Mongolian variation selectors and the vowel separator choose a letter's form.
bool mongolianSelectorShows(const QList<uint> &text, qsizetype index)
{
    const char32_t before = characterAt(text, index - 1);
    return QChar::isLetter(before) && QChar::script(before) == QChar::Script_Mongolian;
}

bool showsInContext(const QList<uint> &text, qsizetype index)
{
    const char32_t character = text.at(index);
    if (character == zeroWidthNonJoiner)
        return nonJoinerShows(text, index);
    if (character == zeroWidthJoiner)
        return joinerShows(text, index);
    if (character == textSelector || character == emojiSelector)
        return selectorShows(text, index);
    return isInside(mongolianSelectors, character) && mongolianSelectorShows(text, index);
}

} // namespace

bool Invisible::isInvisible(char32_t character)
{
    if (QChar::category(character) == QChar::Other_Format)
        return !isInside(visibleFormats, character);
    return isInside(otherIgnorables, character);
}

bool Invisible::isHidden(const QList<uint> &text, qsizetype index)
{
    return isInvisible(text.at(index)) && !showsInContext(text, index);
}

bool Invisible::isBreakOrControl(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}
