// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Values/ScriptTextParts.h"

#include <QTextBoundaryFinder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Parts = ScriptTextParts::Parts;

Parts characters(const QString &text)
{
    Parts parts;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype start = 0;
    for (qsizetype end = finder.toNextBoundary(); end >= 0; end = finder.toNextBoundary()) {
        parts.append({start, end - start});
        start = end;
    }
    return parts;
}

Parts words(const QString &text)
{
    Parts parts;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    qsizetype start = 0;
    bool isInWord = finder.boundaryReasons().testFlag(QTextBoundaryFinder::StartOfItem);
    for (qsizetype end = finder.toNextBoundary(); end >= 0; end = finder.toNextBoundary()) {
        if (isInWord && end > start)
            parts.append({start, end - start});
        start = end;
        isInWord = finder.boundaryReasons().testFlag(QTextBoundaryFinder::StartOfItem);
    }
    return parts;
}

Parts paragraphs(const QString &text)
{
    Parts parts;
    qsizetype start = 0;
    for (qsizetype position = 0; position < text.size(); ++position) {
        const QChar character = text.at(position);
        if (character != u'\n' && character != u'\r' && character != QChar::ParagraphSeparator)
            continue;
        parts.append({start, position - start});
        if (character == u'\r' && position + 1 < text.size() && text.at(position + 1) == u'\n')
            ++position;
        start = position + 1;
    }
    parts.append({start, text.size() - start});
    return parts;
}

// The longest delimiter that stands here, or nothing.
qsizetype delimiterAt(const QString &text, qsizetype position, const ScriptDelimiters &delimiters)
{
    qsizetype longest = 0;
    for (const QString &delimiter : delimiters) {
        if (delimiter.size() > longest &&
            QStringView(text).mid(position).startsWith(delimiter, Qt::CaseInsensitive))
            longest = delimiter.size();
    }
    return longest;
}

Parts textItems(const QString &text, const ScriptDelimiters &delimiters)
{
    if (delimiters.isEmpty() || delimiters.contains(QString()))
        return characters(text);
    Parts parts;
    qsizetype start = 0;
    for (qsizetype position = 0; position < text.size();) {
        const qsizetype length = delimiterAt(text, position, delimiters);
        if (length > 0) {
            parts.append({start, position - start});
            start = position + length;
        }
        position += std::max<qsizetype>(length, 1);
    }
    if (!text.isEmpty())
        parts.append({start, text.size() - start});
    return parts;
}

std::optional<Parts> split(const QString &text, const QString &className, const ScriptDelimiters &delimiters)
{
    if (className == "character"_L1 || className == "item"_L1)
        return characters(text);
    if (className == "word"_L1)
        return words(text);
    if (className == "paragraph"_L1)
        return paragraphs(text);
    if (className == "text item"_L1)
        return textItems(text, delimiters);
    return std::nullopt;
}

} // namespace

bool ScriptTextParts::isClass(const QString &className)
{
    return className == "character"_L1 || className == "word"_L1 || className == "paragraph"_L1 ||
           className == "text item"_L1;
}

std::optional<Parts> ScriptTextParts::of(const QString &text, const QString &className,
                                         const ScriptDelimiters &delimiters)
{
    return split(text, className, delimiters);
}
