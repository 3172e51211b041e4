// SPDX-License-Identifier: Apache-2.0
// How strokes are divided into text for an input method and keys.
#include "Desktop/Linux/ShellExtension/ShellStrokes.h"

#include "Desktop/Linux/KeyStrokes.h"
#include "Desktop/PlatformError.h"

#include <QTest>

using namespace Qt::StringLiterals;
using KeyStrokes::key;
using KeyStrokes::text;

namespace {

ShellStroke piece(const QString &text)
{
    return {KeyStrokes::text(text), true};
}

} // namespace

class ShellStrokesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textIsEntered();
    void everyLineBreakIsALineFeed();
    void keysStayAsTheyAre();
    void longTextIsDividedBetweenCharacters();
    void controlCharactersAreRefused();
};

void ShellStrokesTest::textIsEntered()
{
    const QList<ShellStroke> plan = planShellStrokes({text(u"Größe 漢字"_s), text(u" 👍🏽"_s)});
    QCOMPARE(plan, (QList<ShellStroke>{piece(u"Größe 漢字"_s), piece(u" 👍🏽"_s)}));
}

void ShellStrokesTest::everyLineBreakIsALineFeed()
{
    const QList<ShellStroke> plan = planShellStrokes({text(u"a\r\n\tb\rc\u2028d\n"_s)});
    QStringList pieces;
    for (const ShellStroke &stroke : plan)
        pieces.append(stroke.stroke.text);
    QCOMPARE(pieces.join(u'|'), u"a|\n|\t|b|\n|c|\n|d|\n"_s);
    QVERIFY(plan.last().endsStroke && !plan.first().endsStroke);
}

void ShellStrokesTest::keysStayAsTheyAre()
{
    const KeyStroke save = key(1, EventFlag::Command);
    QCOMPARE(planShellStrokes({text(u"a"_s), save}),
             (QList<ShellStroke>{piece(u"a"_s), ShellStroke{save, true}}));
}

// One Wayland message carries at most 4,000 bytes.
void ShellStrokesTest::longTextIsDividedBetweenCharacters()
{
    const QString whole = u"x"_s + u"👍"_s.repeated(2000);
    QString joined;
    for (const ShellStroke &stroke : planShellStrokes({text(whole)})) {
        const QString text = stroke.stroke.text;
        QVERIFY(text.toUtf8().size() < 4000);
        QVERIFY(!text.front().isLowSurrogate());
        joined += text;
    }
    QCOMPARE(joined, whole);
}

void ShellStrokesTest::controlCharactersAreRefused()
{
    QVERIFY_THROWS_EXCEPTION(PlatformError, planShellStrokes({text(u"a\u001b[A"_s)}));
}

QTEST_GUILESS_MAIN(ShellStrokesTest)
#include "ShellStrokesTest.moc"
