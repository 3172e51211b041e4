// SPDX-License-Identifier: Apache-2.0
// Launching, focusing and quitting real applications, judged by the windows on the screen.
#include "desktop/support/DesktopTest.h"

using namespace Qt::StringLiterals;

class ApplicationsTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void opensByNameAliasAndRole_data();
    void opensByNameAliasAndRole();
    void tellsWhichApplicationIsMissing_data();
    void tellsWhichApplicationIsMissing();
    void bringsARunningApplicationForward();
    void quitsAnApplicationWithoutUnsavedWork_data();
    void quitsAnApplicationWithoutUnsavedWork();
    void leavesAnApplicationWithUnsavedWorkAsking_data();
    void leavesAnApplicationWithUnsavedWorkAsking();
    void doesNotQuitWhatDoesNotRun();
    void listsTheWindowsFrontToBack();
    void opensATabInTheApplicationNamed();
    void refusesScripts();
};

void ApplicationsTest::opensByNameAliasAndRole_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("windowClass");
    QTest::newRow("GTK, by its name") << u"Mousepad"_s << u"Mousepad"_s;
    QTest::newRow("GTK, in another letter case") << u"mousePAD"_s << u"Mousepad"_s;
    QTest::newRow("Qt, by its name") << u"FeatherPad"_s << u"FeatherPad"_s;
    QTest::newRow("by a part of its name") << u"calc"_s << u"gnome-calculator"_s;
    QTest::newRow("by a name from elsewhere, text editor") << u"TextEdit"_s << u"Mousepad"_s;
    QTest::newRow("by a name from elsewhere, file manager") << u"Finder"_s << u"Thunar"_s;
    QTest::newRow("by a name from elsewhere, browser") << u"Safari"_s << u"firefox-esr"_s;
    QTest::newRow("a browser, by a part of its name") << u"Firefox"_s << u"firefox-esr"_s;
}

void ApplicationsTest::opensByNameAliasAndRole()
{
    QFETCH(QString, name);
    QFETCH(QString, windowClass);
    const Outcome outcome = perform("open_app", {{"app", name}});
    VERIFY_EFFECT(Screen::activeClass().compare(windowClass, Qt::CaseInsensitive) == 0, outcome);
    QVERIFY2(!outcome.hasFailed && outcome.line.endsWith(" is now frontmost."_L1), qPrintable(outcome.line));
}

void ApplicationsTest::tellsWhichApplicationIsMissing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("unknown") << u"Zanzibar Studio"_s;
    QTest::newRow("an alias of what is not installed") << u"settings"_s;
}

void ApplicationsTest::tellsWhichApplicationIsMissing()
{
    QFETCH(QString, name);
    const Outcome outcome = perform("open_app", {{"app", name}});
    QCOMPARE(outcome.line, u"Couldn't find an app called “%1”."_s.arg(name));
    QVERIFY(outcome.hasFailed);
    QVERIFY2(Screen::windows().isEmpty(), qPrintable(Screen::described()));
}

void ApplicationsTest::bringsARunningApplicationForward()
{
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QVERIFY(PrivateDesktop::open(u"featherpad"_s, {}, u"FeatherPad"_s));
    for (const QString &name : {u"Mousepad"_s, u"FeatherPad"_s}) {
        const Outcome outcome = perform("focus_app", {{"app", name}});
        VERIFY_EFFECT(Screen::activeClass() == name, outcome);
        QCOMPARE(Screen::windows().size(), 2); // none was started a second time
    }
}

void ApplicationsTest::quitsAnApplicationWithoutUnsavedWork_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("windowClass");
    QTest::addColumn<QString>("name");
    QTest::newRow("GTK 3") << u"mousepad"_s << u"Mousepad"_s << u"mousepad"_s;
    QTest::newRow("GTK 4") << u"gnome-calculator"_s << u"gnome-calculator"_s << u"Calculator"_s;
    QTest::newRow("Qt") << u"featherpad"_s << u"FeatherPad"_s << u"FeatherPad"_s;
    QTest::newRow("Firefox") << u"firefox-esr"_s << u"firefox-esr"_s << u"Firefox"_s;
}

void ApplicationsTest::quitsAnApplicationWithoutUnsavedWork()
{
    QFETCH(QString, program);
    QFETCH(QString, windowClass);
    QFETCH(QString, name);
    QVERIFY(PrivateDesktop::open(program, {}, windowClass));
    const Outcome outcome = perform("quit_app", {{"app", name}});
    VERIFY_EFFECT(!Screen::shows(windowClass), outcome);
    QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
}

void ApplicationsTest::leavesAnApplicationWithUnsavedWorkAsking_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("windowClass");
    QTest::newRow("GTK") << u"mousepad"_s << u"Mousepad"_s;
    QTest::newRow("Qt") << u"featherpad"_s << u"FeatherPad"_s;
}

void ApplicationsTest::leavesAnApplicationWithUnsavedWorkAsking()
{
    QFETCH(QString, program);
    QFETCH(QString, windowClass);
    QVERIFY(PrivateDesktop::open(program, {}, windowClass));
    const Outcome typed = perform("type_text", {{"text", u"not saved yet"_s}});
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));

    const Outcome outcome = perform("quit_app", {{"app", windowClass}});
    VERIFY_EFFECT(Screen::windowsOf(windowClass).size() == 2 &&
                      Screen::windowsOf(windowClass).last().isDialog,
                  outcome);
    QCOMPARE(outcome.line, u"Asked %1 to quit (it may be waiting on a save prompt)."_s.arg(windowClass));
}

void ApplicationsTest::doesNotQuitWhatDoesNotRun()
{
    QCOMPARE(perform("quit_app", {{"app", u"Mousepad"_s}}).line, u"Mousepad is not running."_s);
}

void ApplicationsTest::listsTheWindowsFrontToBack()
{
    PrivateDesktop::write(PrivateDesktop::home(u"Documents/plan.txt"_s), "a plan");
    QVERIFY(
        PrivateDesktop::open(u"mousepad"_s, {PrivateDesktop::home(u"Documents/plan.txt"_s)}, u"Mousepad"_s));
    QVERIFY(PrivateDesktop::open(u"gnome-calculator"_s, {}, u"gnome-calculator"_s));
    const QString both = perform("list_windows").line;
    const qsizetype calculator = both.indexOf("Calculator"_L1);
    const qsizetype mousepad = both.indexOf(u"Mousepad — "_s);
    QVERIFY2(calculator >= 0 && mousepad > calculator && both.contains("plan.txt"_L1), qPrintable(both));

    QVERIFY(PrivateDesktop::clear());
    QCOMPARE(perform("list_windows").line, u"none"_s);
}

// The new tab goes somewhere else and is closed again: then the window shows what the first tab showed.
void ApplicationsTest::opensATabInTheApplicationNamed()
{
    QVERIFY(PrivateDesktop::open(u"thunar"_s, {PrivateDesktop::home(u"Downloads"_s)}, u"Thunar"_s));
    const auto title = [] { return Screen::windowsOf(u"Thunar"_s).value(0).title; };
    QTRY_VERIFY_WITH_TIMEOUT(title().startsWith("Downloads"_L1), PrivateDesktop::patience);
    QVERIFY(PrivateDesktop::open(u"featherpad"_s, {}, u"FeatherPad"_s));

    const Outcome outcome = perform("new_tab", {{"app", u"Finder"_s}});
    QCOMPARE(outcome.line, u"Opened a new tab."_s);
    QCOMPARE(Screen::activeClass(), u"Thunar"_s);
    Screen::pressKey(u"alt+Up"_s);
    VERIFY_EFFECT(!title().startsWith("Downloads"_L1), outcome);
    Screen::pressKey(u"ctrl+w"_s);
    VERIFY_EFFECT(title().startsWith("Downloads"_L1), outcome);
}

void ApplicationsTest::refusesScripts()
{
    const Outcome outcome =
        perform("applescript", {{"script", u"tell application \"Finder\" to activate"_s}});
    QVERIFY(outcome.hasFailed);
    QVERIFY2(outcome.line.startsWith("AppleScript error: "_L1) && outcome.line.size() > 25,
             qPrintable(outcome.line));
    QVERIFY(Screen::windows().isEmpty());
}

QTEST_MAIN(ApplicationsTest)
#include "ApplicationsTest.moc"
