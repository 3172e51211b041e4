// SPDX-License-Identifier: Apache-2.0
#include "Base/Text.h"

#include <QTextBoundaryFinder>

namespace {

constexpr char32_t zeroWidthJoiner = 0x200D;

// Line breaks of every kind, tabs and control characters are shown as a blank.
bool isBreakOrControl(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

// Characters that a person does not see but a model does: bidirectional controls, zero-width characters,
// tags, lone surrogates. The joiner stays, since emoji and several scripts are spelt with it.
bool isInvisible(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    return (category == QChar::Other_Format && character != zeroWidthJoiner) ||
           category == QChar::Other_Surrogate || (character >= 0xE0000 && character <= 0xE0FFF);
}

} // namespace

QString Text::trimmed(const QString &text)
{
    return text.trimmed();
}

QString Text::comparisonKey(const QString &text)
{
    // Folding can decompose ("İ"), so the composition comes last; composed first, so that folding sees
    // letters.
    return text.normalized(QString::NormalizationForm_C)
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
        if (finder.toNextBoundary() < 0)
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
            finder.toNextBoundary();
        pieces.append(text.mid(start, finder.position() - start));
        start = finder.position();
    }
    return pieces;
}

QString Text::capitalized(const QString &text)
{
    QString result;
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, text);
    qsizetype start = 0;
    for (qsizetype end = words.toNextBoundary(); end >= 0; end = words.toNextBoundary()) {
        const QString word = text.mid(start, end - start);
        const QString first = firstCharacters(word, 1);
        result += first.toUpper() + word.mid(first.size()).toLower();
        start = end;
    }
    return result;
}

QString Text::cleaned(const QString &foreign)
{
    QString result;
    result.reserve(foreign.size());
    for (const char32_t character : foreign.toUcs4()) {
        if (isBreakOrControl(character))
            result += u' ';
        else if (!isInvisible(character))
            result += QString::fromUcs4(&character, 1);
    }
    return withoutMarkers(result);
}

QString Text::withoutMarkers(const QString &text)
{
    QString result = text;
    // Breaking the opening can leave no new one behind, nor can breaking the closing; "<|>" is both.
    result.replace(QLatin1String("<|"), QLatin1String("< |"));
    result.replace(QLatin1String("|>"), QLatin1String("| >"));
    return result;
}
