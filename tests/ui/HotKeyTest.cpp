// SPDX-License-Identifier: Apache-2.0
// The global hot key Alt+Space, free and owned by the window manager.
#include "Support/Awaited.h"
#include "ui/support/UiTest.h"

#include "Desktop/Linux/HotKeys/LinuxHotKeys.h"
#include "Desktop/SystemClock.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

const QString hotKey = u"alt+space"_s;

// Removes the key from the window manager's settings.
void freeTheKey()
{
    QProcess::execute(u"timeout"_s,
                      {u"20"_s, u"xfconf-query"_s, u"--channel"_s, u"xfce4-keyboard-shortcuts"_s,
                       u"--property"_s, u"/xfwm4/custom/<Alt>space"_s, u"--reset"_s});
}

// Whether the key can be grabbed now.
bool isFree()
{
    constexpr std::uint16_t spaceBar = 49;
    constexpr HotKeyIdentifier identifier{fourCharacterCode("TEST"), 1};
    SystemClock clock;
    X11Display display(clock);
    LinuxHotKeys hotKeys(display);
    const HotKeyModifiers option = HotKeyModifier::Option;
    const std::function<void()> nothing = [] {};
    return Awaited::result(hotKeys.registerHotKey(spaceBar, option, identifier, nothing)) != nullptr;
}

} // namespace

class UiHotKeyTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void whereItIsTakenNothingBreaks();
    void itHidesAndSummons();
    void itBringsTheWindowOverAnotherApplication();
    void itSummonsAWindowThatWasClosed();
};

// Must run first: later tests change the window manager's settings permanently.
void UiHotKeyTest::whereItIsTakenNothingBreaks()
{
    QVERIFY(!isFree());
    QVERIFY(orvane().startShown());
    Screen::pressKey(hotKey); // opens the window manager's menu
    Screen::pressKey(u"Escape"_s);
    QVERIFY(orvane().waitForActive());
    type(u"still here"_s);
    QVERIFY(orvane().waitForFieldText(u"still here"_s));
}

void UiHotKeyTest::itHidesAndSummons()
{
    freeTheKey();
    VERIFY_SOON(isFree());
    QVERIFY(orvane().startShown());
    for (int round = 0; round < 3; ++round) {
        VERIFY_SOON(!isFree()); // grabbed by now
        Screen::pressKey(hotKey);
        QVERIFY(orvane().waitForHidden());
        QVERIFY(orvane().isRunning());
        Screen::pressKey(hotKey);
        QVERIFY(orvane().waitForActive());
        QVERIFY(orvane().waitForFocus(u"Tell your computer what to do…"_s));
    }
    // Nothing else received the key.
    QCOMPARE(orvane().fieldText(), QString());
}

void UiHotKeyTest::itBringsTheWindowOverAnotherApplication()
{
    freeTheKey();
    VERIFY_SOON(isFree());
    QVERIFY(orvane().startShown());
    VERIFY_SOON(!isFree());
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QVERIFY(orvane().waitForInactive());
    Screen::pressKey(hotKey);
    QVERIFY(orvane().waitForActive());
    QVERIFY(orvane().waitForFocus(u"Tell your computer what to do…"_s));
    type(u"over it"_s);
    QVERIFY(orvane().waitForFieldText(u"over it"_s));
    // And back: the application from before has the focus again.
    Screen::pressKey(hotKey);
    QVERIFY(orvane().waitForHidden());
    VERIFY_SOON(Screen::activeClass() == "Mousepad"_L1);
}

void UiHotKeyTest::itSummonsAWindowThatWasClosed()
{
    freeTheKey();
    VERIFY_SOON(isFree());
    QVERIFY(orvane().startShown());
    VERIFY_SOON(!isFree());
    Screen::pressKey(u"ctrl+w"_s);
    QVERIFY(orvane().waitForHidden());
    Screen::pressKey(hotKey);
    QVERIFY(orvane().waitForActive());
    QVERIFY(orvane().waitForFocus(u"Tell your computer what to do…"_s));
}

QTEST_GUILESS_MAIN(UiHotKeyTest)
#include "HotKeyTest.moc"
