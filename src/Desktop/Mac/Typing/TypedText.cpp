// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Typing/TypedText.h"

#include <QTextBoundaryFinder>

namespace {

// The end of the piece that begins at `start`.
qsizetype endOfPiece(const QString &text, qsizetype start, QTextBoundaryFinder &characters)
{
    const qsizetype limit = start + TypedText::mostUnits;
    if (limit >= text.size())
        return text.size();
    characters.setPosition(limit);
    const qsizetype end = characters.isAtBoundary() ? limit : characters.toPreviousBoundary();
    if (end > start)
        return end;
    return text[limit].isLowSurrogate() ? limit - 1 : limit;
}

} // namespace

QList<KeyStroke> TypedText::fitted(const QList<KeyStroke> &strokes)
{
    QList<KeyStroke> result;
    for (const KeyStroke &stroke : strokes) {
        if (stroke.text.size() <= mostUnits) {
            result.append(stroke);
            continue;
        }
        QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, stroke.text);
        for (qsizetype start = 0; start < stroke.text.size();) {
            const qsizetype end = endOfPiece(stroke.text, start, characters);
            result.append({stroke.virtualKey, stroke.flags, stroke.text.sliced(start, end - start)});
            start = end;
        }
    }
    return result;
}
