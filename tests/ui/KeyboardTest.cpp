// SPDX-License-Identifier: Apache-2.0
// Everything can be reached without a pointer and told apart without eyes: the Tab key comes to every
// control, and every control says what it is.
#include "ui/support/ScriptedModel.h"
#include "ui/support/UiTest.h"

#include <QSet>

using namespace Qt::StringLiterals;

class UiKeyboardTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsNamedAndReached_data();
    void everyControlIsNamedAndReached();
    void theQuestionKeepsTheKeyboard();
    void theMenuOfModelsWorksByKeyboard();

private:
    enum class Content { Setup, Examples, History };
    bool show(int content);
    QSet<QString> controls();
    QSet<QString> reachedByTab();
};

bool UiKeyboardTest::show(int content)
{
    if (Content(content) != Content::Setup)
        ScriptedModel::writeAnswering(R"({"action":"done","message":"All is well."})", orvane().modelPath());
    if (!orvane().startShown())
        return false;
    if (Content(content) == Content::Setup)
        return orvane().waitFor(Role::label, u"Set up your private AI"_s);
    if (!orvane().waitFor(Role::label, u"Try"_s))
        return false;
    if (Content(content) == Content::History) {
        type(u"Is all well?"_s);
        Screen::pressKey(u"Return"_s);
        return orvane().waitFor(Role::label, u"All is well."_s) &&
               orvane().waitForFocus(u"Tell your Mac what to do…"_s);
    }
    return true;
}

// What the user can do something with, by role and name. (The state that says so is of no use: Qt gives it to
// every label.)
QSet<QString> UiKeyboardTest::controls()
{
    static const QSet<QString> roles{Role::button, Role::field, Role::picker, u"link"_s, u"list"_s};
    QSet<QString> found;
    for (const AccessibleElement &element : orvane().shown()) {
        if (roles.contains(element.role))
            found << element.role + u' ' + element.name;
    }
    return found;
}

QSet<QString> UiKeyboardTest::reachedByTab()
{
    constexpr int mostControls = 30;
    QSet<QString> reached;
    for (int presses = 0; presses < mostControls && !reached.contains(orvane().focused()); ++presses) {
        const QString before = orvane().focused();
        reached << before;
        Screen::pressKey(u"Tab"_s);
        if (!QTest::qWaitFor([&] { return orvane().focused() != before; }, PrivateDesktop::patience))
            break;
    }
    return reached;
}

void UiKeyboardTest::everyControlIsNamedAndReached_data()
{
    QTest::addColumn<int>("content");
    QTest::newRow("setup") << int(Content::Setup);
    QTest::newRow("examples") << int(Content::Examples);
    QTest::newRow("history") << int(Content::History);
}

void UiKeyboardTest::everyControlIsNamedAndReached()
{
    QFETCH(int, content);
    QVERIFY(show(content));
    for (const AccessibleElement &element : orvane().shown()) {
        QVERIFY2(!element.name.trimmed().isEmpty(), qPrintable(u"a nameless "_s + element.role));
        QVERIFY2(!element.role.isEmpty() && element.role != "unknown"_L1 && element.role != "invalid"_L1,
                 qPrintable(element.name));
    }
    const QSet<QString> all = controls();
    QVERIFY2(all.size() >= 3, qPrintable(orvane().described()));
    const QSet<QString> missed = all - reachedByTab();
    QVERIFY2(missed.isEmpty(), qPrintable(QStringList(missed.cbegin(), missed.cend()).join(u", "_s)));
}

void UiKeyboardTest::theQuestionKeepsTheKeyboard()
{
    const QString path = PrivateDesktop::home(u"Downloads/keep.txt"_s);
    PrivateDesktop::write(path, "kept");
    ScriptedModel::writeAnswering(R"({"action":"trash","path":"Downloads/keep.txt"})", orvane().modelPath());
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    type(u"Tidy up"_s);
    Screen::pressKey(u"Return"_s);
    QVERIFY(orvane().waitFor(Role::dialog, u"Confirm action"_s));
    QVERIFY(orvane().find(Role::dialog, u"Confirm action"_s)->description.contains(u"keep.txt"_s));
    QSet<QString> reached;
    for (int presses = 0; presses < 6; ++presses) {
        const QString before = orvane().focused();
        Screen::pressKey(u"Tab"_s);
        VERIFY_SOON(orvane().focused() != before);
        reached << orvane().focused();
    }
    const QSet<QString> buttons{Role::button + u" Cancel"_s, Role::button + u" Allow"_s};
    QCOMPARE(reached, buttons);
    // The space bar presses what has the focus.
    while (orvane().focused() != Role::button + u" Cancel"_s) {
        Screen::pressKey(u"Tab"_s);
        VERIFY_SOON(!orvane().focused().isEmpty());
    }
    Screen::pressKey(u"space"_s);
    QVERIFY(orvane().waitForNone(Role::button, u"Allow"_s));
    QVERIFY(orvane().waitFor(Role::label, u"Declined: Moving “Downloads/keep.txt” to Trash"_s));
}

void UiKeyboardTest::theMenuOfModelsWorksByKeyboard()
{
    const QString modelName = u"Qwen2.5 1.5B Instruct"_s;
    QVERIFY(show(int(Content::Examples)));
    for (int presses = 0; presses < 30 && !orvane().focused().endsWith(modelName); ++presses)
        Screen::pressKey(u"Tab"_s);
    QVERIFY2(orvane().focused().endsWith(modelName), qPrintable(orvane().focused()));
    Screen::pressKey(u"space"_s);
    QVERIFY(orvane().waitFor(Role::menuItem, u"Llama 3.2 3B Instruct"_s));
    QVERIFY(orvane().waitFor(Role::menuItem, modelName));
    Screen::pressKey(u"Down"_s);
    Screen::pressKey(u"Return"_s);
    // That one is not on this machine.
    QVERIFY(orvane().waitFor(Role::button, u"Download Llama 3.2 3B Instruct"_s));
    QVERIFY(orvane().waitForNone(Role::menuItem, modelName));
}

QTEST_GUILESS_MAIN(UiKeyboardTest)
#include "KeyboardTest.moc"
