// SPDX-License-Identifier: Apache-2.0
// One program, one window: hidden, closed, summoned, and started again.
#include "ui/support/Pointer.h"
#include "ui/support/ScriptedModel.h"
#include "ui/support/UiTest.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

using namespace Qt::StringLiterals;

namespace {

const QString fieldName = u"Tell your computer what to do…"_s;
constexpr QRect screenArea(0, 0, 1280, 800);

// The process id of the running instance.
qint64 runningInstance()
{
    return QDBusConnection::sessionBus().interface()->servicePid(u"org.orvane.Orvane"_s).value();
}

} // namespace

class UiShellTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void toggleHidesAndShows();
    void aSecondStartBringsAClosedWindowBack();
    void aSecondStartComesOverAnotherApplication();
    void startedInTheBackgroundItIsHidden();
    void startedInTheBackgroundItLeavesTheModelAlone();
    void toggleWithoutARunningProgramShowsTheWindow();
    void aSummonCentresAMovedWindow();
    void aTaskGoesOnWithoutTheWindow();
    void itCanBeStartedAgainDuringItsEnd();
    void theContextMenuHides();

private:
    bool isCentred();
};

bool UiShellTest::isCentred()
{
    const auto window = orvane().window();
    if (!window)
        return false;
    const QPoint offset = window->area.center() - screenArea.center();
    return qAbs(offset.x()) <= 1 && qAbs(offset.y()) <= 1;
}

void UiShellTest::toggleHidesAndShows()
{
    QVERIFY(orvane().startShown());
    const qint64 process = orvane().process();
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(orvane().startOnceMore({u"--toggle"_s}), 0);
        QVERIFY(orvane().waitForHidden());
        QCOMPARE(orvane().startOnceMore({u"--toggle"_s}), 0);
        QVERIFY(orvane().waitForActive());
        QVERIFY(orvane().waitForFocus(fieldName));
        VERIFY_SOON(isCentred());
    }
    QVERIFY(orvane().isRunning());
    QCOMPARE(orvane().process(), process);
}

void UiShellTest::aSecondStartBringsAClosedWindowBack()
{
    QVERIFY(orvane().startShown());
    type(u"half a tas"_s);
    QVERIFY(orvane().waitForFieldText(u"half a tas"_s));
    Screen::pressKey(u"ctrl+w"_s);
    QVERIFY(orvane().waitForHidden());
    QVERIFY(orvane().isRunning());
    QCOMPARE(orvane().startOnceMore(), 0);
    QVERIFY(orvane().waitForActive());
    QVERIFY(orvane().waitForFocus(fieldName));
    QCOMPARE(orvane().fieldText(), u"half a tas"_s);
    QCOMPARE(Screen::windows().size(), 1);
}

void UiShellTest::aSecondStartComesOverAnotherApplication()
{
    QVERIFY(orvane().startShown());
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QCOMPARE(orvane().startOnceMore(), 0);
    QVERIFY(orvane().waitForActive());
    QVERIFY(orvane().waitForFocus(fieldName));
    // A second start does not hide it; only the hot key and `--toggle` do.
    QCOMPARE(orvane().startOnceMore(), 0);
    QVERIFY(orvane().waitForFocus(fieldName));
    QVERIFY(orvane().isActive());
}

void UiShellTest::startedInTheBackgroundItIsHidden()
{
    QVERIFY(orvane().start({u"--background"_s}));
    VERIFY_SOON(runningInstance() == orvane().process());
    QCOMPARE(orvane().startOnceMore({u"--background"_s}), 0); // returns once the program is up
    QVERIFY(orvane().isRunning());
    QVERIFY(!orvane().window());
    QCOMPARE(orvane().startOnceMore(), 0);
    QVERIFY(orvane().waitForActive());
    QVERIFY(orvane().waitForFocus(fieldName));
    VERIFY_SOON(isCentred());
}

// A broken model replaced in time is never examined.
void UiShellTest::startedInTheBackgroundItLeavesTheModelAlone()
{
    PrivateDesktop::write(orvane().modelPath(), "no model at all");
    QVERIFY(orvane().start({u"--background"_s}));
    QVERIFY(orvane().waitForWindow());
    orvane().installPracticeModel();
    QCOMPARE(orvane().startOnceMore(), 0);
    QVERIFY(orvane().waitForActive());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
}

void UiShellTest::toggleWithoutARunningProgramShowsTheWindow()
{
    QVERIFY(orvane().start({u"--toggle"_s}));
    QVERIFY(orvane().waitForActive());
    QVERIFY(orvane().waitForFocus(fieldName));
}

void UiShellTest::aSummonCentresAMovedWindow()
{
    QVERIFY(orvane().startShown());
    VERIFY_SOON(isCentred());
    const QRect before = orvane().window()->area;
    const auto badge = orvane().find(Role::label, u"On-device"_s);
    QVERIFY(badge);
    // By the footer's background.
    const QPoint grip(before.center().x(), badge->area.center().y());
    Pointer::drag(grip, grip + QPoint(-150, -60));
    VERIFY_SOON(!isCentred());
    QCOMPARE(orvane().window()->area.size(), before.size());
    QCOMPARE(orvane().startOnceMore({u"--toggle"_s}), 0);
    QVERIFY(orvane().waitForHidden());
    QCOMPARE(orvane().startOnceMore({u"--toggle"_s}), 0);
    QVERIFY(orvane().waitForActive());
    VERIFY_SOON(isCentred());
    QVERIFY(orvane().waitForFocus(fieldName));
}

void UiShellTest::aTaskGoesOnWithoutTheWindow()
{
    ScriptedModel::writeBabbling(orvane().modelPath());
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    type(u"Babble"_s);
    Screen::pressKey(u"Return"_s);
    QVERIFY(orvane().waitFor(Role::label, u"Thinking…"_s));
    Screen::pressKey(u"ctrl+w"_s);
    QVERIFY(orvane().waitForHidden());
    QCOMPARE(orvane().startOnceMore(), 0);
    QVERIFY(orvane().waitForActive());
    QVERIFY(orvane().waitForEndOfRun());
    QVERIFY(orvane().shows(Role::label, u"I couldn't work out a plan for that."_s));
    QVERIFY(orvane().shows(Role::label, u"Babble"_s));
}

// The window closes at once; the process ends with the model's reply, possibly much later.
void UiShellTest::itCanBeStartedAgainDuringItsEnd()
{
    constexpr int slowHeadSize = 8192;
    ScriptedModel::writeBabbling(orvane().modelPath(), slowHeadSize);
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    type(u"Babble"_s);
    Screen::pressKey(u"Return"_s);
    QVERIFY(orvane().waitFor(Role::label, u"Thinking…"_s));
    Screen::pressKey(u"ctrl+q"_s);
    QVERIFY(orvane().waitForHidden());
    WindowDriver next;
    QVERIFY(next.startShown());
    QVERIFY(orvane().waitForEnd() == 0);
    QVERIFY(next.isActive());
}

void UiShellTest::theContextMenuHides()
{
    QVERIFY(orvane().startShown());
    Screen::pressKey(u"shift+F10"_s);
    for (const QString &item : {u"Clear History"_s, u"Hide"_s, u"Quit"_s})
        QVERIFY2(orvane().waitFor(Role::menuItem, item), qPrintable(item));
    QVERIFY(orvane().press(Role::menuItem, u"Hide"_s));
    QVERIFY(orvane().waitForHidden());
    QVERIFY(orvane().isRunning());
}

QTEST_GUILESS_MAIN(UiShellTest)
#include "ShellTest.moc"
