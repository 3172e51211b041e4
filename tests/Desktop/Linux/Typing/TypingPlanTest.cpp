// SPDX-License-Identifier: Apache-2.0
// How strokes are converted to keys of a layout.
#include "Desktop/Linux/Typing/TypingPlan.h"

#include "Desktop/PlatformError.h"

#include <QTest>

#include <xkbcommon/xkbcommon.h>

using namespace Qt::StringLiterals;

namespace {

// A small layout: a, A and @, two keys without characters, and two spare keys.
KeyboardLayout smallLayout()
{
    KeyboardLayout layout;
    layout.symbols = {{XKB_KEY_a, {38, {}}}, {XKB_KEY_Return, {36, {}}}, {XKB_KEY_Tab, {23, {}}}};
    layout.characters = {
        {U'a', {38, {}}}, {U'A', {38, ModifierKey::Shift}}, {U'@', {24, ModifierKey::ThirdLevel}}};
    layout.modifierCodes = {{ModifierKey::Shift, 50},
                            {ModifierKey::Control, 37},
                            {ModifierKey::Alternate, 64},
                            {ModifierKey::ThirdLevel, 92}};
    layout.spareCodes = {93, 97};
    return layout;
}

KeyStroke text(const QString &text)
{
    return {0, {}, text};
}

QList<std::uint8_t> codes(const TypingBatch &batch)
{
    QList<std::uint8_t> result;
    for (const PlannedKey &key : batch.keys)
        result.append(key.code);
    return result;
}

} // namespace

class TypingPlanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commandBecomesControl()
    {
        const KeyStroke stroke{0, EventFlag::Command | EventFlag::Shift, {}};
        const auto plan = planTyping({stroke}, smallLayout());
        QCOMPARE(plan.size(), 1);
        QCOMPARE(codes(plan[0]), QList<std::uint8_t>{38});
        QCOMPARE(plan[0].keys[0].modifiers, ModifierKey::Control | ModifierKey::Shift);
    }

    void optionBecomesAlternate()
    {
        const KeyStroke stroke{36, EventFlag::Alternate | EventFlag::Control, {}};
        const auto plan = planTyping({stroke}, smallLayout());
        QCOMPARE(codes(plan[0]), QList<std::uint8_t>{36});
        QCOMPARE(plan[0].keys[0].modifiers, ModifierKey::Alternate | ModifierKey::Control);
    }

    void textTakesTheModifiersThatItsCharactersNeed()
    {
        const auto plan = planTyping({text(u"aA@"_s)}, smallLayout());
        QCOMPARE(codes(plan[0]), (QList<std::uint8_t>{38, 38, 24}));
        QCOMPARE(plan[0].keys[0].modifiers, ModifierKeys());
        QCOMPARE(plan[0].keys[1].modifiers, ModifierKeys(ModifierKey::Shift));
        QCOMPARE(plan[0].keys[2].modifiers, ModifierKeys(ModifierKey::ThirdLevel));
    }

    void lineBreaksAreReturnAndTabsAreTab()
    {
        const auto plan = planTyping({text(u"a\na\r\na\ta\u2028"_s)}, smallLayout());
        QCOMPARE(plan.size(), 1);
        QCOMPARE(codes(plan[0]), (QList<std::uint8_t>{38, 36, 38, 36, 38, 23, 38, 36}));
    }

    void missingCharactersGoOntoSpareKeys()
    {
        const auto plan = planTyping({text(u"яaя"_s)}, smallLayout());
        QCOMPARE(plan.size(), 1);
        QCOMPARE(codes(plan[0]), (QList<std::uint8_t>{93, 38, 93}));
        QCOMPARE(plan[0].lentSymbols, (QHash<std::uint8_t, std::uint32_t>{{93, XKB_KEY_Cyrillic_ya}}));
    }

    void aDigitThatNeedsShiftIsLentToItsOwnKeyForACommand()
    {
        KeyboardLayout azerty = smallLayout();
        azerty.symbols.insert(XKB_KEY_1, {10, ModifierKey::Shift});
        azerty.symbols.insert(XKB_KEY_slash, {60, ModifierKey::Shift});
        const KeyStroke digit{18, EventFlag::Command, {}};
        const auto plan = planTyping({digit}, azerty);
        QCOMPARE(plan.size(), 1);
        QCOMPARE(codes(plan[0]), QList<std::uint8_t>{10});
        QCOMPARE(plan[0].keys[0].modifiers, ModifierKeys(ModifierKey::Control));
        QCOMPARE(plan[0].lentSymbols, (QHash<std::uint8_t, std::uint32_t>{{10, XKB_KEY_1}}));

        // Without a command modifier, digits are typed with Shift, as are other keys that need it.
        const KeyStroke plain{18, {}, {}};
        const KeyStroke slash{44, EventFlag::Command, {}};
        for (const KeyStroke &stroke : {plain, slash}) {
            const auto shifted = planTyping({stroke}, azerty);
            QVERIFY(shifted[0].lentSymbols.isEmpty());
            QVERIFY(shifted[0].keys[0].modifiers.testFlag(ModifierKey::Shift));
        }
    }

    void aLetterOfAnotherGroupIsLentToItsOwnKeyForACommand()
    {
        KeyboardLayout russian = smallLayout();
        russian.otherGroups = {{XKB_KEY_l, 46}};
        const KeyStroke command{37, EventFlag::Command, {}};
        const auto plan = planTyping({command}, russian);
        QCOMPARE(codes(plan[0]), QList<std::uint8_t>{46});
        QCOMPARE(plan[0].lentSymbols, (QHash<std::uint8_t, std::uint32_t>{{46, XKB_KEY_l}}));

        const KeyStroke plain{37, {}, {}};
        const auto typed = planTyping({plain}, russian);
        QCOMPARE(typed[0].lentSymbols, (QHash<std::uint8_t, std::uint32_t>{{93, XKB_KEY_l}}));
    }

    void aKeyIsLentASymbolForItsOwnStrokeAlone()
    {
        KeyboardLayout azerty = smallLayout();
        azerty.symbols.insert(XKB_KEY_1, {38, ModifierKey::Shift});
        const KeyStroke digit{18, EventFlag::Command, {}};
        const auto plan = planTyping({text(u"a"_s), digit, text(u"aя"_s)}, azerty);
        QCOMPARE(plan.size(), 3);
        QVERIFY(plan[0].lentSymbols.isEmpty());
        QCOMPARE(plan[1].lentSymbols, (QHash<std::uint8_t, std::uint32_t>{{38, XKB_KEY_1}}));
        QCOMPARE(plan[1].keys[0].endsStroke, true);
        QCOMPARE(codes(plan[2]), (QList<std::uint8_t>{38, 93}));
        QCOMPARE(plan[2].lentSymbols, (QHash<std::uint8_t, std::uint32_t>{{93, XKB_KEY_Cyrillic_ya}}));
    }

    void aNewBatchStartsWhenTheSpareKeysAreUsedUp()
    {
        const auto plan = planTyping({text(u"一二一三四"_s)}, smallLayout());
        QCOMPARE(plan.size(), 2);
        QCOMPARE(codes(plan[0]), (QList<std::uint8_t>{93, 97, 93}));
        QCOMPARE(codes(plan[1]), (QList<std::uint8_t>{93, 97}));
        QCOMPARE(plan[1].lentSymbols.value(93), std::uint32_t(0x1000000 + 0x4E09));
        QCOMPARE(plan[1].lentSymbols.value(97), std::uint32_t(0x1000000 + 0x56DB));
    }

    void aClusterIsTypedCodePointByCodePoint()
    {
        const auto plan = planTyping({text(u"👍🏽"_s)}, smallLayout());
        QCOMPARE(plan.size(), 1);
        QCOMPARE(plan[0].lentSymbols.value(93), std::uint32_t(0x1000000 + 0x1F44D));
        QCOMPARE(plan[0].lentSymbols.value(97), std::uint32_t(0x1000000 + 0x1F3FD));
    }

    void everyStrokeEndsWithItsPause()
    {
        const auto plan = planTyping({text(u"aa"_s), text(u"a"_s)}, smallLayout());
        QCOMPARE(plan[0].keys[0].endsStroke, false);
        QCOMPARE(plan[0].keys[1].endsStroke, true);
        QCOMPARE(plan[0].keys[2].endsStroke, true);
    }

    void untypableStrokesAreErrors()
    {
        KeyboardLayout full = smallLayout();
        full.spareCodes.clear();
        QVERIFY_THROWS_EXCEPTION(PlatformError, planTyping({text(u"я"_s)}, full));
        QVERIFY_THROWS_EXCEPTION(PlatformError, planTyping({text(QString(QChar(27)))}, smallLayout()));
        const KeyStroke unknown{200, {}, {}};
        QVERIFY_THROWS_EXCEPTION(PlatformError, planTyping({unknown}, smallLayout()));
        KeyboardLayout poor = smallLayout();
        poor.modifierCodes.clear();
        QVERIFY_THROWS_EXCEPTION(PlatformError, planTyping({text(u"A"_s)}, poor));
    }
};

QTEST_GUILESS_MAIN(TypingPlanTest)
#include "TypingPlanTest.moc"
