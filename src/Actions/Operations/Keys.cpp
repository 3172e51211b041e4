// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/Keys.h"

#include "Actions/ActionError.h"
#include "Actions/Trust.h"
#include "Base/PlatformWords.h"
#include "Base/Text.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// Text is sent in pieces, with a pause after each so that the receiving application keeps up.
constexpr qsizetype charactersPerPiece = 20;
constexpr auto pauseAfterPiece = 15'000us;

} // namespace

QCoro::Task<void> Keys::keystroke(QString key, QStringList modifiers,
                                  std::optional<RunningApplication> receiver, Desktop desktop)
{
    co_await Trust::requireTrust(PlatformWords::current().keysRefusal, desktop);
    const auto code = keyCodes().constFind(Text::comparisonKey(key));
    if (code == keyCodes().constEnd())
        throw ActionError(u"Unsupported key “%1”."_s.arg(key));
    const QList<KeyStroke> strokes{KeyStroke{*code, modifierFlags(modifiers), QString()}};
    co_await desktop.keyboard.post(strokes, 0us, receiver);
}

QCoro::Task<void> Keys::typeText(QString text, std::optional<RunningApplication> receiver, Desktop desktop)
{
    co_await Trust::requireTrust(PlatformWords::current().typingRefusal, desktop);
    QList<KeyStroke> strokes;
    const QStringList pieces = Text::chunked(text, charactersPerPiece);
    for (const QString &piece : pieces)
        strokes.append(KeyStroke{0, EventFlags(), piece});
    if (!strokes.isEmpty())
        co_await desktop.keyboard.post(strokes, pauseAfterPiece, receiver);
}

QCoro::Task<void> Keys::keystroke(QString key, QStringList modifiers, Desktop desktop)
{
    const std::optional<RunningApplication> receiver = co_await desktop.workspace.frontmostApplication();
    co_await keystroke(key, modifiers, receiver, desktop);
}
