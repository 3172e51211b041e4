// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/ShellExtension/ShellStrokes.h"

#include "Desktop/Linux/Typing/TypingPlan.h"

namespace {

// One Wayland message carries at most 4,000 bytes.
constexpr qsizetype longestText = 500;

void addText(QList<ShellStroke> &result, const QString &text)
{
    QString piece;
    const auto endPiece = [&result, &piece] {
        if (!piece.isEmpty())
            result.append({{0, {}, piece}, false});
        piece.clear();
    };
    char32_t previous = 0;
    for (const char32_t character : text.toUcs4()) {
        const bool endsPair = previous == U'\r' && character == U'\n';
        previous = character;
        if (endsPair)
            continue;
        const char32_t typed = isLineBreak(character) ? U'\n' : character;
        const bool isKey = typed == U'\n' || typed == U'\t';
        if (isKey)
            endPiece();
        else
            requireTypable(typed);
        piece += QString::fromUcs4(&typed, 1);
        if (isKey || piece.size() >= longestText)
            endPiece();
    }
    endPiece();
}

} // namespace

QList<ShellStroke> planShellStrokes(const QList<KeyStroke> &strokes)
{
    QList<ShellStroke> result;
    for (const KeyStroke &stroke : strokes) {
        const qsizetype before = result.size();
        if (stroke.text.isEmpty())
            result.append({stroke, false});
        else
            addText(result, stroke.text);
        if (result.size() > before)
            result.last().endsStroke = true;
    }
    return result;
}
