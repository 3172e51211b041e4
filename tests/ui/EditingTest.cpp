// SPDX-License-Identifier: Apache-2.0
// Text and the mouse: the field's menu, and selecting in a streaming reply.
#include "ui/support/Pointer.h"
#include "ui/support/ScriptedModel.h"
#include "ui/support/UiTest.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString fieldName = u"Tell your computer what to do…"_s;

} // namespace

class UiEditingTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void theFieldsMenuCutsAndPastes();
    void elsewhereTheMenuIsTheWindowsAlone();
    void aSelectionInTheReplySurvivesItsGrowth();

private:
    std::optional<AccessibleElement> reply();
};

// The reply so far.
std::optional<AccessibleElement> UiEditingTest::reply()
{
    const QList<AccessibleElement> elements = orvane().shown();
    const auto found = std::ranges::find_if(
        elements, [](const AccessibleElement &element) { return element.name.startsWith(u"abab"_s); });
    return found == elements.end() ? std::nullopt : std::optional(*found);
}

void UiEditingTest::theFieldsMenuCutsAndPastes()
{
    QVERIFY(orvane().startShown());
    type(u"Open Safari"_s);
    QVERIFY(orvane().waitForFieldText(u"Open Safari"_s));
    const auto field = orvane().find(Role::field, fieldName);
    QVERIFY(field);
    const QPoint word = field->area.topLeft() + QPoint(10, field->area.height() / 2);
    Pointer::doubleClick(word);
    Pointer::rightClick(word);
    for (const QString &item : {u"Cut"_s, u"Copy"_s, u"Paste"_s, u"Clear History"_s, u"Hide"_s, u"Quit"_s})
        QVERIFY2(orvane().waitFor(Role::menuItem, item), qPrintable(item));
    QVERIFY(orvane().click(Role::menuItem, u"Cut"_s));
    QVERIFY(orvane().waitForFieldText(u" Safari"_s));
    Pointer::rightClick(word);
    QVERIFY(orvane().click(Role::menuItem, u"Paste"_s));
    QVERIFY(orvane().waitForFieldText(u"Open Safari"_s));
    type(u"d"_s);
    QVERIFY(orvane().waitForFieldText(u"Opend Safari"_s));
}

void UiEditingTest::elsewhereTheMenuIsTheWindowsAlone()
{
    QVERIFY(orvane().startShown());
    const auto badge = orvane().find(Role::label, u"On-device"_s);
    QVERIFY(badge);
    Pointer::rightClick(badge->area.center());
    QVERIFY(orvane().waitFor(Role::menuItem, u"Hide"_s));
    QVERIFY(!orvane().shows(Role::menuItem, u"Paste"_s));
}

void UiEditingTest::aSelectionInTheReplySurvivesItsGrowth()
{
    constexpr int slowHeadSize = 8192;
    ScriptedModel::writeBabbling(orvane().modelPath(), slowHeadSize);
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    type(u"Babble"_s);
    Screen::pressKey(u"Return"_s);
    constexpr int halfAReply = 100;
    constexpr int slowestPrompt = 240'000; // ms
    std::optional<AccessibleElement> seen;
    const auto hasBegun = [&] {
        seen = reply();
        return seen && seen->name.size() < halfAReply;
    };
    QVERIFY(QTest::qWaitFor(hasBegun, slowestPrompt));
    // More text arrives before the key press does, but not all.
    Pointer::doubleClick(seen->area.topLeft() + QPoint(5, 5));
    Screen::pressKey(u"ctrl+c"_s);
    QVERIFY(orvane().press(Role::button, u"Stop"_s));
    QVERIFY(orvane().waitForEndOfRun());
    Screen::pressKey(u"ctrl+v"_s);
    VERIFY_SOON(orvane().fieldText().startsWith(u"abab"_s));
}

QTEST_GUILESS_MAIN(UiEditingTest)
#include "EditingTest.moc"
