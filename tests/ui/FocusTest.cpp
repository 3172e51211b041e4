// SPDX-License-Identifier: Apache-2.0
// The keyboard focus after mouse clicks: typed text goes to the field, and no key accidentally ends a task.
#include "ui/support/Pointer.h"
#include "ui/support/ScriptedModel.h"
#include "ui/support/UiTest.h"

using namespace Qt::StringLiterals;

namespace {

const QString modelName = u"Qwen2.5 1.5B Instruct"_s;
const QString otherModelName = u"Llama 3.2 3B Instruct"_s;

} // namespace

class UiFocusTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void afterAClickOnSendReturnDoesNotStop();
    void afterAClickOnStopTheFieldTakesWhatIsTyped();
    void afterAClickOnTheHistoryTheFieldTakesWhatIsTyped_data();
    void afterAClickOnTheHistoryTheFieldTakesWhatIsTyped();
    void theModelCannotBeSwitchedWhileATaskRuns();

private:
    bool startBabbling();
    bool typedTextArrives();
};

// Starts a task of some seconds by clicking Send.
bool UiFocusTest::startBabbling()
{
    ScriptedModel::writeBabbling(orvane().modelPath());
    if (!orvane().startShown() || !orvane().waitFor(Role::label, u"Try"_s))
        return false;
    type(u"Babble"_s);
    return orvane().waitForFieldText(u"Babble"_s) && orvane().click(Role::button, u"Send"_s) &&
           orvane().waitFor(Role::label, u"Thinking…"_s);
}

// Types without checking the focus.
bool UiFocusTest::typedTextArrives()
{
    type(u"What next?"_s);
    return orvane().waitForFieldText(u"What next?"_s);
}

void UiFocusTest::afterAClickOnSendReturnDoesNotStop()
{
    QVERIFY(startBabbling());
    Screen::pressKey(u"Return"_s);
    QVERIFY(orvane().waitForEndOfRun());
    QVERIFY(orvane().shows(Role::label, u"I couldn't work out a plan for that."_s));
    QVERIFY(!orvane().shows(Role::label, u"Cancelled"_s));
    QVERIFY(typedTextArrives());
}

void UiFocusTest::afterAClickOnStopTheFieldTakesWhatIsTyped()
{
    QVERIFY(startBabbling());
    QVERIFY(orvane().click(Role::button, u"Stop"_s));
    QVERIFY(orvane().waitForEndOfRun());
    QVERIFY(orvane().shows(Role::label, u"Cancelled"_s));
    QVERIFY(typedTextArrives());
}

void UiFocusTest::afterAClickOnTheHistoryTheFieldTakesWhatIsTyped_data()
{
    QTest::addColumn<int>("clicks");
    QTest::newRow("a click") << 1;
    QTest::newRow("a word selected") << 2;
}

void UiFocusTest::afterAClickOnTheHistoryTheFieldTakesWhatIsTyped()
{
    QFETCH(int, clicks);
    ScriptedModel::writeAnswering(R"({"action":"done","message":"Everything is well."})",
                                  orvane().modelPath());
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    type(u"Is all well?"_s);
    Screen::pressKey(u"Return"_s);
    QVERIFY(orvane().waitFor(Role::label, u"Everything is well."_s));
    QVERIFY(orvane().waitForEndOfRun());
    const std::optional<AccessibleElement> line = orvane().find(Role::label, u"Everything is well."_s);
    QVERIFY(line);
    const QPoint word = line->area.topLeft() + QPoint(10, line->area.height() / 2);
    for (int click = 0; click < clicks; ++click)
        Pointer::click(word);
    QVERIFY(typedTextArrives());
}

void UiFocusTest::theModelCannotBeSwitchedWhileATaskRuns()
{
    QVERIFY(startBabbling());
    QVERIFY(orvane().click(Role::button, modelName));
    QVERIFY(orvane().waitForEndOfRun());
    QVERIFY(!orvane().shows(Role::menuItem, otherModelName));
    QVERIFY(orvane().shows(Role::label, u"I couldn't work out a plan for that."_s));
    QVERIFY(orvane().click(Role::button, modelName));
    QVERIFY(orvane().waitFor(Role::menuItem, otherModelName));
}

QTEST_GUILESS_MAIN(UiFocusTest)
#include "FocusTest.moc"
