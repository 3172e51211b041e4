// SPDX-License-Identifier: Apache-2.0
// What is typed with keys of the user's layout, and what is pasted.
#include "Desktop/Linux/Pasting/PasteSteps.h"

#include "Desktop/Linux/KeyStrokes.h"
#include "Desktop/Linux/Typing/KeymapLayout.h"
#include "Desktop/PlatformError.h"

#include <QTest>

using namespace Qt::StringLiterals;
using KeyStrokes::key;
using KeyStrokes::text;

namespace {

// The keys in evdev's numbering, plus 8.
constexpr std::uint8_t tab = 23;
constexpr std::uint8_t enter = 36;

KeyboardLayout layoutNamed(const char *names, std::uint32_t group = 0)
{
    const XkbPointer<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const xkb_rule_names rules{"evdev", "pc105", names, nullptr, nullptr};
    const XkbPointer<xkb_keymap> keymap(
        xkb_keymap_new_from_names(context.get(), &rules, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap)
        qFatal("There is no layout “%s”", names);
    return layoutOf(keymap.get(), group);
}

QList<PasteStep> steps(const QList<KeyStroke> &strokes, const KeyboardLayout &layout,
                       OwnCharacters own = OwnCharacters::Typed)
{
    return planPasteSteps(strokes, layout, own);
}

// The steps as text: the keycode of each key, preceded by its modifiers, or the text in quotes.
QString described(const QList<PasteStep> &steps)
{
    QStringList words;
    for (const PasteStep &step : steps) {
        if (!step.text.isEmpty())
            words.append(u'"' + step.text + u'"');
        for (const PlannedKey &key : step.keys) {
            QString word;
            if (key.modifiers.testFlag(ModifierKey::Control))
                word += u"control+"_s;
            if (key.modifiers.testFlag(ModifierKey::Shift))
                word += u"shift+"_s;
            if (key.modifiers.testFlag(ModifierKey::ThirdLevel))
                word += u"third+"_s;
            words.append(word + QString::number(key.code));
        }
    }
    return words.join(u' ');
}

QString errorOf(const QList<KeyStroke> &strokes, const KeyboardLayout &layout)
{
    try {
        steps(strokes, layout);
    } catch (const PlatformError &error) {
        return error.errorDescription();
    }
    return {};
}

} // namespace

class PasteStepsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ownCharactersAreKeys_data()
    {
        QTest::addColumn<QByteArray>("layout");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("keys");
        QTest::newRow("US") << QByteArray("us") << u"aZ"_s << u"38 shift+52"_s;
        QTest::newRow("German") << QByteArray("de") << u"yö@"_s << u"52 47 third+24"_s;
        QTest::newRow("French") << QByteArray("fr") << u"a1é"_s << u"24 shift+10 11"_s;
        QTest::newRow("Russian") << QByteArray("ru") << u"Ф"_s << u"shift+38"_s;
    }

    void ownCharactersAreKeys()
    {
        QFETCH(const QByteArray, layout);
        QFETCH(const QString, text);
        QTEST(described(steps({KeyStrokes::text(text)}, layoutNamed(layout.constData()))), "keys");
    }

    void aLineWithAnotherCharacterIsPastedAsAWhole()
    {
        QCOMPARE(described(steps({text(u"ab\ngröße\nc"_s)}, layoutNamed("us"))),
                 u"38 56 %1 \"größe\" %1 54"_s.arg(enter));
    }

    void tabsAndLineBreaksAreKeys()
    {
        QCOMPARE(described(steps({text(u"ä\tä\r\nä\rä\u2028\n"_s)}, layoutNamed("us"))),
                 u"\"ä\" %1 \"ä\" %2 \"ä\" %2 \"ä\" %2 %2"_s.arg(tab).arg(enter));
    }

    void strokesOfOneTextAreJoined()
    {
        QCOMPARE(described(steps({text(u"漢"_s), text(u"字\r"_s), text(u"\nä"_s), key(36), text(u"ö"_s)},
                                 layoutNamed("us"))),
                 u"\"漢字\" %1 \"ä\" %1 \"ö\""_s.arg(enter));
    }

    void longTextsHaveSeveralSteps()
    {
        const QList<PasteStep> all = steps({text(QString(45, u'a'))}, layoutNamed("us"));
        QCOMPARE(all.size(), 3);
        QCOMPARE(all.at(0).keys.size(), 20);
        QCOMPARE(all.at(2).keys.size(), 5);
    }

    void ownCharactersCanBePasted()
    {
        QCOMPARE(described(steps({text(u"Ab\tc"_s), key(9, EventFlag::Command)}, layoutNamed("us"),
                                 OwnCharacters::Pasted)),
                 u"\"Ab\" %1 \"c\" control+55"_s.arg(tab));
    }

    // Users press Ctrl with the digit's key, without Shift.
    void aDigitThatNeedsShiftIsItsKey()
    {
        QCOMPARE(described(steps({key(18, EventFlag::Command)}, layoutNamed("fr"))), u"control+10"_s);
    }

    void aShortcutIsTheKeyOfAnotherGroup()
    {
        QCOMPARE(described(steps({key(17, EventFlag::Command)}, layoutNamed("us,ru", 1))), u"control+28"_s);
    }

    void aKeyThatTheLayoutLacksIsPasted()
    {
        const QList<KeyStroke> strokes{key(0), key(0, EventFlag::Shift), key(33, EventFlag::Shift), key(19)};
        QCOMPARE(described(steps(strokes, layoutNamed("ru,us"))), u"\"a\" \"A\" \"[\" 11"_s);
    }

    void aShortcutWithoutAKeyIsRefused()
    {
        QCOMPARE(errorOf({key(17, EventFlag::Command)}, layoutNamed("ru")),
                 u"The keyboard layout can't type this, and has no spare keys."_s);
    }

    void whatNoKeyTypesIsNotPasted()
    {
        for (const QString &bad : {u"ä\x1b"_s, u"ä\x03"_s, u"ä\x7f"_s})
            QVERIFY2(errorOf({text(bad)}, layoutNamed("us")).startsWith(u"The text holds a character"_s),
                     qPrintable(bad));
    }
};

QTEST_GUILESS_MAIN(PasteStepsTest)
#include "PasteStepsTest.moc"
