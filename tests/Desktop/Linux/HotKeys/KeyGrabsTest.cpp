// SPDX-License-Identifier: Apache-2.0
// Which keycodes and modifiers are grabbed for a hot key.
#include "Desktop/Linux/HotKeys/KeyGrabs.h"

#include <QTest>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace {

constexpr std::uint16_t shift = 0x01, lock = 0x02, control = 0x04, mod1 = 0x08, mod2 = 0x10, mod3 = 0x20,
                        mod5 = 0x80;

// Keycodes from 10, with two keysyms each.
CoreKeyboard usual()
{
    CoreKeyboard keyboard;
    keyboard.firstCode = 10;
    keyboard.symbolsPerCode = 2;
    keyboard.symbols = {XKB_KEY_space,       0,              // 10
                        XKB_KEY_Alt_L,       XKB_KEY_Meta_L, // 11
                        XKB_KEY_Num_Lock,    0,              // 12
                        XKB_KEY_a,           XKB_KEY_space,  // 13
                        XKB_KEY_k,           XKB_KEY_K,      // 14
                        XKB_KEY_Alt_R,       0,              // 15
                        XKB_KEY_Scroll_Lock, 0};             // 16
    //                        Shift  Lock Control Mod1 Mod2 Mod3 Mod4 Mod5
    keyboard.modifierCodes = {20, 21, 22, 11, 12, 0, 23, 0};
    return keyboard;
}

CoreKeyboard with(QList<std::uint8_t> modifierCodes)
{
    CoreKeyboard keyboard = usual();
    keyboard.modifierCodes = std::move(modifierCodes);
    return keyboard;
}

CoreKeyboard withoutSpaceInFront()
{
    CoreKeyboard keyboard = usual();
    keyboard.symbols[0] = XKB_KEY_b;
    return keyboard;
}

} // namespace

class KeyGrabsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theKeyAndItsModifiersAreFound_data()
    {
        QTest::addColumn<CoreKeyboard>("keyboard");
        QTest::addColumn<std::uint32_t>("symbol");
        QTest::addColumn<HotKeyModifiers>("modifiers");
        QTest::addColumn<std::uint8_t>("code");
        QTest::addColumn<QList<std::uint16_t>>("combinations");
        const auto row = [](const char *name, const CoreKeyboard &keyboard, std::uint32_t symbol,
                            HotKeyModifiers modifiers, std::uint8_t code,
                            const QList<std::uint16_t> &combinations) {
            QTest::newRow(name) << keyboard << symbol << modifiers << code << combinations;
        };
        using enum HotKeyModifier;
        const QList<std::uint16_t> withLocks{mod1, mod1 | lock, mod1 | mod2, mod1 | lock | mod2};
        row("Option is Alt, with each lock", usual(), XKB_KEY_space, Option, 10, withLocks);
        row("a key that types it with Shift only", withoutSpaceInFront(), XKB_KEY_space, Option, 13,
            withLocks);
        row("another key", usual(), XKB_KEY_k, Option, 14, withLocks);
        row("Command is Control", usual(), XKB_KEY_space, Command, 10,
            {control, control | lock, control | mod2, control | lock | mod2});
        row("Control is Control", usual(), XKB_KEY_space, Control, 10,
            {control, control | lock, control | mod2, control | lock | mod2});
        row("Shift and Option", with({20, 21, 22, 11, 0, 0, 0, 0}), XKB_KEY_space, Shift | Option, 10,
            {shift | mod1, shift | mod1 | lock});
        row("no Num Lock", with({20, 21, 22, 11, 0, 0, 0, 0}), XKB_KEY_space, Option, 10,
            {mod1, mod1 | lock});
        row("three locks", with({20, 21, 22, 11, 12, 16, 0, 0}), XKB_KEY_space, Option, 10,
            {mod1, mod1 | lock, mod1 | mod2, mod1 | lock | mod2, mod1 | mod3, mod1 | lock | mod3,
             mod1 | mod2 | mod3, mod1 | lock | mod2 | mod3});
        row("Alt elsewhere", with({20, 21, 22, 0, 12, 0, 0, 11}), XKB_KEY_space, Option, 10,
            {mod5, mod5 | lock, mod5 | mod2, mod5 | lock | mod2});
        row("the right Alt alone", with({20, 21, 22, 15, 0, 0, 0, 0}), XKB_KEY_space, Option, 10,
            {mod1, mod1 | lock});
        row("several keys a modifier", with({20, 0, 21, 0, 22, 0, 15, 11, 12, 0, 0, 0, 0, 0, 0, 0}),
            XKB_KEY_space, Option, 10, withLocks);
        row("no Alt", with({20, 21, 22, 0, 12, 0, 0, 0}), XKB_KEY_space, Option, 0, {});
        row("no such key", usual(), XKB_KEY_z, Option, 0, {});
        row("no keyboard", CoreKeyboard(), XKB_KEY_space, Option, 0, {});
    }

    void theKeyAndItsModifiersAreFound()
    {
        QFETCH(CoreKeyboard, keyboard);
        QFETCH(std::uint32_t, symbol);
        QFETCH(HotKeyModifiers, modifiers);
        QFETCH(QList<std::uint16_t>, combinations);
        const KeyGrabs grabs = KeyGrabs::find(keyboard, symbol, modifiers);
        QTEST(grabs.code, "code");
        QList<std::uint16_t> found = grabs.combinations();
        QCOMPARE(found.value(0), combinations.value(0));
        std::sort(found.begin(), found.end());
        std::sort(combinations.begin(), combinations.end());
        QCOMPARE(found, combinations);
    }

    void aPressIsRecognised_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("isOurs");
        QTest::newRow("as asked for") << 10 << int(mod1) << true;
        QTest::newRow("with locks") << 10 << int(mod1 | lock | mod2) << true;
        QTest::newRow("with a pointer button and a second layout")
            << 10 << int(mod1 | 0x100 | 0x2000) << true;
        QTest::newRow("another key") << 11 << int(mod1) << false;
        QTest::newRow("one more modifier") << 10 << int(mod1 | shift) << false;
        QTest::newRow("no modifier") << 10 << 0 << false;
    }

    void aPressIsRecognised()
    {
        QFETCH(int, code);
        QFETCH(int, state);
        const KeyGrabs grabs = KeyGrabs::find(usual(), XKB_KEY_space, HotKeyModifier::Option);
        QTEST(grabs.isMadeBy(std::uint8_t(code), std::uint16_t(state)), "isOurs");
        QVERIFY(!KeyGrabs().isMadeBy(0, 0));
    }
};

QTEST_GUILESS_MAIN(KeyGrabsTest)
#include "KeyGrabsTest.moc"
