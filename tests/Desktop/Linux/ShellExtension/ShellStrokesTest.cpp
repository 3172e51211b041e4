// SPDX-License-Identifier: Apache-2.0
// How strokes are divided into text for an input method and keys.
#include "Desktop/Linux/ShellExtension/ShellStrokes.h"

#include "Desktop/Linux/KeyStrokes.h"
#include "Desktop/PlatformError.h"

#include <QTest>

#include <xkbcommon/xkbcommon-keysyms.h>

using namespace Qt::StringLiterals;
using KeyStrokes::key;
using KeyStrokes::text;

namespace {

ShellStroke entered(const QString &text, bool endsStroke)
{
    return {text, {}, endsStroke};
}

ShellStroke pressed(const QList<std::uint32_t> &symbols, bool endsStroke)
{
    return {{}, symbols, endsStroke};
}

} // namespace

class ShellStrokesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textIsEntered();
    void lineBreaksAndTabsAreKeys();
    void keysComeAfterTheirModifiers();
    void longTextIsDividedBetweenCharacters();
    void controlCharactersAreRefused();
};

void ShellStrokesTest::textIsEntered()
{
    const QList<ShellStroke> plan = planShellStrokes({text(u"Größe 漢字"_s), text(u" 👍🏽"_s)});
    QCOMPARE(plan, (QList<ShellStroke>{entered(u"Größe 漢字"_s, true), entered(u" 👍🏽"_s, true)}));
}

void ShellStrokesTest::lineBreaksAndTabsAreKeys()
{
    const QList<ShellStroke> plan = planShellStrokes({text(u"a\r\n\tb\n"_s)});
    QCOMPARE(plan, (QList<ShellStroke>{entered(u"a"_s, false), pressed({XKB_KEY_Return}, false),
                                       pressed({XKB_KEY_Tab}, false), entered(u"b"_s, false),
                                       pressed({XKB_KEY_Return}, true)}));
}

void ShellStrokesTest::keysComeAfterTheirModifiers()
{
    const EventFlags all = EventFlag::Command | EventFlag::Alternate | EventFlag::Shift;
    const QList<ShellStroke> plan = planShellStrokes({key(1, all)});
    QCOMPARE(plan, (QList<ShellStroke>{
                       pressed({XKB_KEY_Control_L, XKB_KEY_Alt_L, XKB_KEY_Shift_L, XKB_KEY_s}, true)}));
}

// One Wayland message carries at most 4,000 bytes.
void ShellStrokesTest::longTextIsDividedBetweenCharacters()
{
    const QString whole = u"x"_s + u"👍"_s.repeated(2000);
    QString joined;
    for (const ShellStroke &stroke : planShellStrokes({text(whole)})) {
        QVERIFY(stroke.text.toUtf8().size() < 4000);
        QVERIFY(!stroke.text.front().isLowSurrogate());
        joined += stroke.text;
    }
    QCOMPARE(joined, whole);
}

void ShellStrokesTest::controlCharactersAreRefused()
{
    QVERIFY_THROWS_EXCEPTION(PlatformError, planShellStrokes({text(u"a\u001b[A"_s)}));
}

QTEST_GUILESS_MAIN(ShellStrokesTest)
#include "ShellStrokesTest.moc"
