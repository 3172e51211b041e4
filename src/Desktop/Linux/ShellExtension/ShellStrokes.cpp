// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/ShellExtension/ShellStrokes.h"

#include "Desktop/Linux/Typing/TypingPlan.h"
#include "Desktop/Linux/Typing/VirtualKeys.h"
#include "Desktop/PlatformError.h"

#include <xkbcommon/xkbcommon-keysyms.h>

using namespace Qt::StringLiterals;

namespace {

// One Wayland message carries at most 4,000 bytes.
constexpr qsizetype longestText = 500;

QList<std::uint32_t> modifierSymbols(EventFlags flags)
{
    QList<std::uint32_t> symbols;
    // Command means Control on this platform.
    if (flags & (EventFlag::Command | EventFlag::Control))
        symbols.append(XKB_KEY_Control_L);
    if (flags & EventFlag::Alternate)
        symbols.append(XKB_KEY_Alt_L);
    if (flags & EventFlag::Shift)
        symbols.append(XKB_KEY_Shift_L);
    return symbols;
}

ShellStroke keyOf(const KeyStroke &stroke)
{
    const std::optional<std::uint32_t> symbol = symbolOfVirtualKey(stroke.virtualKey);
    if (!symbol)
        throw PlatformError(u"This keyboard has no key for the code %1."_s.arg(stroke.virtualKey));
    QList<std::uint32_t> symbols = modifierSymbols(stroke.flags);
    symbols.append(*symbol);
    return {{}, symbols, false};
}

void addText(QList<ShellStroke> &result, const QString &text)
{
    ShellStroke piece;
    const auto endPiece = [&result, &piece] {
        if (!piece.text.isEmpty())
            result.append(piece);
        piece.text.clear();
    };
    char32_t previous = 0;
    for (const char32_t character : text.toUcs4()) {
        const bool endsPair = previous == U'\r' && character == U'\n';
        previous = character;
        if (endsPair)
            continue;
        const char32_t typed = isLineBreak(character) ? U'\n' : character;
        if (typed != U'\n' && typed != U'\t')
            requireTypable(typed);
        piece.text += QString::fromUcs4(&typed, 1);
        if (piece.text.size() >= longestText)
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
            result.append(keyOf(stroke));
        else
            addText(result, stroke.text);
        if (result.size() > before)
            result.last().endsStroke = true;
    }
    return result;
}
