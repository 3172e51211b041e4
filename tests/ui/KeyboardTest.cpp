// SPDX-License-Identifier: Apache-2.0
// The window without a pointer or eyes: every control is reachable by the Tab key and has an accessible name.
#include "ui/support/ScriptedModel.h"
#include "ui/support/UiTest.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostControls = 30;

} // namespace

class UiKeyboardTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsNamedAndReached_data();
    void everyControlIsNamedAndReached();
    void everyMenuIsNamed_data();
    void everyMenuIsNamed();
    void theQuestionKeepsTheKeyboard();
    void theMenuOfModelsWorksByKeyboard();

private:
    enum class Content { Setup, Examples, History };
    bool show(int content);
    QSet<QString> controls();
    QStringList nameless();
    QSet<QString> reachedByTab();
    bool tabTo(const QString &name);
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
               orvane().waitForFocus(u"Tell your computer what to do…"_s);
    }
    return true;
}

// The controls by role and name. (The focusable state is useless here: Qt sets it on every label.)
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

// Visible elements without a name, by role.
QStringList UiKeyboardTest::nameless()
{
    static const QSet<QString> roles{QString(), u"unknown"_s, u"invalid"_s};
    QStringList found;
    for (const AccessibleElement &element : orvane().shown()) {
        if (element.name.trimmed().isEmpty() || roles.contains(element.role))
            found << element.role + u' ' + element.name;
    }
    return found;
}

bool UiKeyboardTest::tabTo(const QString &name)
{
    for (int presses = 0; presses < mostControls && !orvane().focused().endsWith(name); ++presses)
        Screen::pressKey(u"Tab"_s);
    return orvane().waitForFocus(name);
}

QSet<QString> UiKeyboardTest::reachedByTab()
{
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
    QCOMPARE(nameless(), QStringList());
    const QSet<QString> all = controls();
    QVERIFY2(all.size() >= 3, qPrintable(orvane().described()));
    const QSet<QString> missed = all - reachedByTab();
    QVERIFY2(missed.isEmpty(), qPrintable(QStringList(missed.cbegin(), missed.cend()).join(u", "_s)));
}

void UiKeyboardTest::everyMenuIsNamed_data()
{
    QTest::addColumn<int>("content");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("item");
    QTest::newRow("choice of a model") << int(Content::Setup) << u"Model"_s << u"Return"_s
                                       << u"Llama 3.2 3B Instruct — Smarter planning · ~2 GB"_s;
    QTest::newRow("menu of models") << int(Content::Examples) << u"Qwen2.5 1.5B Instruct"_s << u"space"_s
                                    << u"Llama 3.2 3B Instruct"_s;
    QTest::newRow("menu of the window") << int(Content::Examples) << u"Tell your computer what to do…"_s
                                        << u"shift+F10"_s << u"Clear History"_s;
}

void UiKeyboardTest::everyMenuIsNamed()
{
    QFETCH(int, content);
    QFETCH(QString, button);
    QFETCH(QString, key);
    QFETCH(QString, item);
    QVERIFY(show(content));
    QVERIFY(tabTo(button));
    Screen::pressKey(key);
    VERIFY_SOON(orvane().described().contains(item));
    QCOMPARE(nameless(), QStringList());
    Screen::pressKey(u"Escape"_s);
    VERIFY_SOON(!orvane().described().contains(item));
    QVERIFY(orvane().waitForFocus(button));
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
    // The space bar presses the focused control.
    const QString cancel = Role::button + u" Cancel"_s;
    for (int presses = 0; presses < 6 && orvane().focused() != cancel; ++presses) {
        Screen::pressKey(u"Tab"_s);
        VERIFY_SOON(!orvane().focused().isEmpty());
    }
    QCOMPARE(orvane().focused(), cancel);
    Screen::pressKey(u"space"_s);
    QVERIFY(orvane().waitForNone(Role::button, u"Allow"_s));
    QVERIFY(orvane().waitFor(Role::label, u"Declined: Moving “Downloads/keep.txt” to Trash"_s));
}

void UiKeyboardTest::theMenuOfModelsWorksByKeyboard()
{
    const QString modelName = u"Qwen2.5 1.5B Instruct"_s;
    QVERIFY(show(int(Content::Examples)));
    QVERIFY(tabTo(modelName));
    Screen::pressKey(u"space"_s);
    QVERIFY(orvane().waitFor(Role::menuItem, u"Llama 3.2 3B Instruct"_s));
    QVERIFY(orvane().waitFor(Role::menuItem, modelName));
    Screen::pressKey(u"Down"_s);
    Screen::pressKey(u"Return"_s);
    // That model is not installed.
    QVERIFY(orvane().waitFor(Role::button, u"Download Llama 3.2 3B Instruct"_s));
    QVERIFY(orvane().waitForNone(Role::menuItem, modelName));
}

QTEST_GUILESS_MAIN(UiKeyboardTest)
#include "KeyboardTest.moc"
