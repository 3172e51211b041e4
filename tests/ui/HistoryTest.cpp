// SPDX-License-Identifier: Apache-2.0
// The history: the newest content stays visible; clearing works only between tasks.
#include "ui/support/Pointer.h"
#include "ui/support/ScriptedModel.h"
#include "ui/support/UiTest.h"

using namespace Qt::StringLiterals;

class UiHistoryTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void theNewestLineIsInSight();
    void itIsClearedOnceNothingRuns();

private:
    bool send(const QString &task);
    // Whether the whole label lies between the command bar and the footer.
    bool isInSight(const QString &label);
};

bool UiHistoryTest::send(const QString &task)
{
    if (!orvane().waitForFocus(u"Tell your computer what to do…"_s))
        return false;
    type(task);
    Screen::pressKey(u"Return"_s);
    return orvane().waitFor(Role::label, task);
}

bool UiHistoryTest::isInSight(const QString &label)
{
    const auto found = orvane().find(Role::label, label);
    const auto field = orvane().find(Role::field, u"Tell your computer what to do…"_s);
    const auto badge = orvane().find(Role::label, u"On-device"_s);
    return found && field && badge && found->area.top() >= field->area.bottom() &&
           found->area.bottom() <= badge->area.top();
}

void UiHistoryTest::theNewestLineIsInSight()
{
    ScriptedModel::writeAnswering(R"({"action":"done","message":"All is well."})", orvane().modelPath());
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    constexpr int tasks = 12; // more than fit into the window
    for (int task = 1; task <= tasks; ++task) {
        const QString text = u"Question %1?"_s.arg(task);
        QVERIFY(send(text));
        VERIFY_SOON(isInSight(text));
        QVERIFY(orvane().waitForEndOfRun());
    }
    QVERIFY(!isInSight(u"Question 1?"_s));

    // Scrolls back.
    QVERIFY(orvane().window());
    Pointer::moveTo(orvane().window()->area.center());
    for (int notch = 0; notch < 40 && !isInSight(u"Question 1?"_s); ++notch)
        Pointer::wheelUp();
    QVERIFY(isInSight(u"Question 1?"_s));
    QVERIFY(!isInSight(u"Question 12?"_s));
    QVERIFY(send(u"And now?"_s));
    VERIFY_SOON(isInSight(u"And now?"_s));
}

void UiHistoryTest::itIsClearedOnceNothingRuns()
{
    ScriptedModel::writeBabbling(orvane().modelPath());
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    QVERIFY(send(u"Babble"_s));
    Screen::pressKey(u"ctrl+k"_s);
    QVERIFY(orvane().waitForEndOfRun());
    QVERIFY(orvane().shows(Role::label, u"Babble"_s));
    Screen::pressKey(u"ctrl+k"_s);
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    QVERIFY(!orvane().shows(Role::label, u"Babble"_s));
}

QTEST_GUILESS_MAIN(UiHistoryTest)
#include "HistoryTest.moc"
