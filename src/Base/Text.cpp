// SPDX-License-Identifier: Apache-2.0
#include "Base/Text.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace {

constexpr char32_t zeroWidthJoiner = 0x200D;

// Tags and the supplementary variation selectors: nothing to see, and room to hide a text in.
constexpr char32_t firstTag = 0xE0000;
constexpr char32_t lastTag = 0xE0FFF;

// Line breaks of every kind, tabs and control characters are shown as a blank.
bool isBreakOrControl(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

// The joiner stays, since emoji and several scripts are spelt with it.
bool isInvisible(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    return (category == QChar::Other_Format && character != zeroWidthJoiner) ||
           (character >= firstTag && character <= lastTag);
}

bool hasCase(char32_t character)
{
    return QChar::isUpper(character) || QChar::isLower(character) || QChar::isTitleCase(character);
}

// Accents and apostrophes stand inside a word without being letters of it.
bool continuesWord(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    return category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing ||
           category == QChar::Other_Format || character == U'\'' || character == U'’';
}

// Whether one of the letters that pair up to flags stands here.
bool isRegionalIndicatorAt(const QString &text, qsizetype position)
{
    return position >= 0 && position + 1 < text.size() && text.at(position) == QChar(0xD83C) &&
           text.at(position + 1) >= QChar(0xDDE6) && text.at(position + 1) <= QChar(0xDDFF);
}

// Whether the position lies between the two halves of a flag. The boundary finder of Qt before 6.5 takes the
// middle of a flag for a boundary when an emoji stands before it.
bool splitsFlag(const QString &text, qsizetype position)
{
    constexpr qsizetype half = 2;
    if (!isRegionalIndicatorAt(text, position))
        return false;
    qsizetype start = position;
    while (isRegionalIndicatorAt(text, start - half))
        start -= half;
    return (position - start) / half % 2 == 1;
}

// Moves on by one user-perceived character; false at the end of the text.
bool toNextCharacter(QTextBoundaryFinder &finder, const QString &text)
{
    if (finder.toNextBoundary() < 0)
        return false;
    while (splitsFlag(text, finder.position()))
        finder.toNextBoundary();
    return true;
}

} // namespace

QString Text::trimmed(const QString &text)
{
    return text.trimmed();
}

QString Text::trimmed(const QString &text, QStringView characters)
{
    qsizetype start = 0;
    qsizetype end = text.size();
    while (start < end && characters.contains(text.at(start)))
        ++start;
    while (end > start && characters.contains(text.at(end - 1)))
        --end;
    return text.mid(start, end - start);
}

QString Text::comparisonKey(const QString &text)
{
    // Composed first, so that both steps see letters; lower-cased too, because folding leaves "İ" alone; and
    // composed again, because that takes letters apart.
    return withoutInvisible(text)
        .normalized(QString::NormalizationForm_C)
        .toLower()
        .toCaseFolded()
        .normalized(QString::NormalizationForm_C);
}

bool Text::equals(const QString &left, const QString &right)
{
    return comparisonKey(left) == comparisonKey(right);
}

bool Text::contains(const QString &text, const QString &part)
{
    return comparisonKey(text).contains(comparisonKey(part));
}

QString Text::firstCharacters(const QString &text, qsizetype count)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype i = 0; i < count; ++i) {
        if (!toNextCharacter(finder, text))
            return text;
    }
    return text.left(finder.position());
}

QStringList Text::chunked(const QString &text, qsizetype size)
{
    QStringList pieces;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype start = 0;
    while (start < text.size()) {
        for (qsizetype i = 0; i < size && finder.position() < text.size(); ++i)
            toNextCharacter(finder, text);
        pieces.append(text.mid(start, finder.position() - start));
        start = finder.position();
    }
    return pieces;
}

QString Text::capitalized(const QString &text)
{
    QString result;
    result.reserve(text.size());
    bool insideWord = false;
    for (const char32_t character : text.toUcs4()) {
        const char32_t shown = insideWord ? QChar::toLower(character) : QChar::toTitleCase(character);
        result += QString::fromUcs4(&shown, 1);
        insideWord = hasCase(character) || (insideWord && continuesWord(character));
    }
    return result;
}

QString Text::cleaned(const QString &foreign)
{
    QString result = withoutInvisible(foreign);
    for (QChar &character : result) {
        if (isBreakOrControl(character.unicode()))
            character = u' ';
    }
    return withoutMarkers(result);
}

std::optional<QString> Text::cleaned(const std::optional<QString> &foreign)
{
    return foreign ? std::optional(cleaned(*foreign)) : std::nullopt;
}

QString Text::withoutInvisible(const QString &text)
{
    // Most texts have nothing of the kind, and are many.
    const bool isPlain = std::none_of(text.cbegin(), text.cend(), [](QChar unit) {
        return unit.isSurrogate() || unit.category() == QChar::Other_Format;
    });
    if (isPlain)
        return text;
    QString result;
    result.reserve(text.size());
    for (const char32_t character : text.toUcs4()) {
        if (!isInvisible(character))
            result += QString::fromUcs4(&character, 1);
    }
    return result;
}

QString Text::withoutMarkers(const QString &text)
{
    QString result = text;
    // Breaking the opening can leave no new one behind, nor can breaking the closing; "<|>" is both.
    result.replace(QLatin1String("<|"), QLatin1String("< |"));
    result.replace(QLatin1String("|>"), QLatin1String("| >"));
    return result;
}
