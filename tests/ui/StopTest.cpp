// SPDX-License-Identifier: Apache-2.0
// Stopping a task in the middle of a reply.
#include "ui/support/ScriptedModel.h"
#include "ui/support/UiTest.h"

using namespace Qt::StringLiterals;

class UiStopTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void aReplyInProgressIsStopped_data();
    void aReplyInProgressIsStopped();
    void aTaskCanFollowAStoppedOne();
    void aScreenReaderIsToldThatTheFieldTakesNoTextMeanwhile();

private:
    bool fieldIsReadOnly();
    bool stopInTheMiddle(const QString &key);
};

// Stops after the reply has begun: with the key if given, otherwise by pressing the button.
bool UiStopTest::stopInTheMiddle(const QString &key)
{
    type(u"Babble"_s);
    Screen::pressKey(u"Return"_s);
    const auto isBabbling = [this] { return !orvane().texts().filter(u"abab"_s).isEmpty(); };
    if (!QTest::qWaitFor(isBabbling, PrivateDesktop::patience))
        return false;
    if (key.isEmpty() && !orvane().press(Role::button, u"Stop"_s))
        return false;
    if (!key.isEmpty()) {
        for (int presses = 0; presses < 10 && orvane().focused() != Role::button + u" Stop"_s; ++presses)
            Screen::pressKey(u"Tab"_s);
        Screen::pressKey(key);
    }
    return orvane().waitForEndOfRun() && orvane().shows(Role::label, u"Cancelled"_s);
}

void UiStopTest::aReplyInProgressIsStopped_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("by a press") << QString();
    QTest::newRow("by the space bar") << u"space"_s;
}

void UiStopTest::aReplyInProgressIsStopped()
{
    QFETCH(QString, key);
    ScriptedModel::writeBabbling(orvane().modelPath());
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    QVERIFY(stopInTheMiddle(key));
    QVERIFY(!orvane().shows(Role::button, u"Stop"_s));
    QVERIFY(!orvane().shows(Role::label, u"Thinking…"_s));
    QVERIFY(orvane().texts().filter(u"abab"_s).isEmpty());
    QVERIFY(orvane().waitForFocus(u"Tell your computer what to do…"_s));
}

void UiStopTest::aTaskCanFollowAStoppedOne()
{
    ScriptedModel::writeBabbling(orvane().modelPath());
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    QVERIFY(stopInTheMiddle({}));
    QVERIFY(orvane().waitForFocus(u"Tell your computer what to do…"_s));
    type(u"Babble on"_s);
    Screen::pressKey(u"Return"_s);
    QVERIFY(orvane().waitFor(Role::label, u"Babble on"_s));
    QVERIFY(orvane().waitForEndOfRun());
    QVERIFY(orvane().shows(Role::label, u"I couldn't work out a plan for that."_s));
    QCOMPARE(orvane().texts().count(u"Cancelled"_s), 1);
}

bool UiStopTest::fieldIsReadOnly()
{
    const std::optional<AccessibleElement> field =
        orvane().find(Role::field, u"Tell your computer what to do…"_s);
    return field && field->has(AccessibleElement::State::ReadOnly);
}

void UiStopTest::aScreenReaderIsToldThatTheFieldTakesNoTextMeanwhile()
{
    ScriptedModel::writeBabbling(orvane().modelPath());
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    QVERIFY(!fieldIsReadOnly());
    type(u"Babble"_s);
    Screen::pressKey(u"Return"_s);
    QVERIFY(QTest::qWaitFor([this] { return fieldIsReadOnly(); }, PrivateDesktop::patience));
    QVERIFY(orvane().press(Role::button, u"Stop"_s));
    QVERIFY(orvane().waitForEndOfRun());
    QVERIFY(QTest::qWaitFor([this] { return !fieldIsReadOnly(); }, PrivateDesktop::patience));
}

QTEST_GUILESS_MAIN(UiStopTest)
#include "StopTest.moc"
