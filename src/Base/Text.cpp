// SPDX-License-Identifier: Apache-2.0
#include "Base/Text.h"

#include "Base/Invisible.h"

#include <QRegularExpression>
#include <QTextBoundaryFinder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Keeps the characters for which `keep` is true. The fast path matters: most texts contain nothing invisible.
template <typename Keep>
QString filtered(const QString &text, const Keep &keep)
{
    const auto isSuspect = [](QChar unit) {
        return unit.isSurrogate() || Invisible::isInvisible(unit.unicode());
    };
    if (std::none_of(text.cbegin(), text.cend(), isSuspect))
        return text;
    const QList<uint> characters = text.toUcs4();
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < characters.size(); ++i) {
        const char32_t character = characters.at(i);
        if (keep(characters, i))
            result += QString::fromUcs4(&character, 1);
    }
    return result;
}

QString markOf(char32_t character)
{
    return u"⟨U+%1⟩"_s.arg(QString::number(character, 16).toUpper(), 4, u'0');
}

bool isLineFeedOrTab(char32_t character)
{
    return character == U'\n' || character == U'\t';
}

bool hasCase(char32_t character)
{
    return QChar::isUpper(character) || QChar::isLower(character) || QChar::isTitleCase(character);
}

// Accents and apostrophes continue a word without being letters.
bool continuesWord(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    return category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing ||
           category == QChar::Other_Format || character == U'\'' || character == U'’';
}

// Whether a regional indicator (half of a flag) starts at `position`.
bool isRegionalIndicatorAt(const QString &text, qsizetype position)
{
    return position >= 0 && position + 1 < text.size() && text.at(position) == QChar(0xD83C) &&
           text.at(position + 1) >= QChar(0xDDE6) && text.at(position + 1) <= QChar(0xDDFF);
}

// Whether `position` lies between the two halves of a flag. Before Qt 6.5, QTextBoundaryFinder reports a
// boundary there when an emoji precedes the flag.
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

// Advances by one grapheme cluster; false at the end of the text.
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
    const auto isVisible = [](const QList<uint> &characters, qsizetype index) {
        return !Invisible::isInvisible(characters.at(index));
    };
    // Compose first so that lower-casing sees whole letters; lower-case because case folding leaves "İ"
    // alone; compose again because lower-casing decomposes it.
    return filtered(text, isVisible)
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
        if (Invisible::isBreakOrControl(character.unicode()))
            character = u' ';
    }
    return withoutMarkers(result);
}

std::optional<QString> Text::cleaned(const std::optional<QString> &foreign)
{
    return foreign ? std::optional(cleaned(*foreign)) : std::nullopt;
}

QString Text::withVisibleMarks(const QString &text, Layout layout)
{
    const QList<uint> characters = text.toUcs4();
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < characters.size(); ++i) {
        const char32_t character = characters.at(i);
        const bool isLaidOut = layout == Layout::Lines && isLineFeedOrTab(character);
        const bool isUnseen = Invisible::isBreakOrControl(character) || Invisible::isHidden(characters, i);
        result += isUnseen && !isLaidOut ? markOf(character) : QString::fromUcs4(&character, 1);
    }
    return result;
}

QString Text::withoutInvisible(const QString &text)
{
    return filtered(text, [](const QList<uint> &characters, qsizetype index) {
        return !Invisible::isHidden(characters, index);
    });
}

QString Text::withoutMarkers(const QString &text)
{
    if (!text.contains("<|"_L1))
        return text;
    // Not static: a thread stuck in a hanging service may still run while statics are destroyed.
    const QRegularExpression marker(u"<\\|([^<>|\\s]+)\\|>"_s);
    QString result = text;
    return result.replace(marker, u"< |\\1| >"_s);
}
