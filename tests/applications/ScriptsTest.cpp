// SPDX-License-Identifier: Apache-2.0
// Scripts that operate real applications, judged by their effect.
#include "applications/support/DesktopTest.h"
#include "applications/support/TextFields.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

class ScriptsTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void returnsAResult();
    void tellsWhatIsWrong();
    void opensAndQuitsAnApplication();
    void typesAndPressesAMenuItem();
    void knowsWindowsAndProcesses();
    void worksOnFiles();
    void fillsAndReadsTheClipboard();

private:
    Outcome run(const QString &source) { return perform("applescript", {{"script", source}}); }
};

void ScriptsTest::returnsAResult()
{
    QCOMPARE(run(u"return 42"_s).line, u"Script returned: 42"_s);
    QCOMPARE(run(u"set x to {1, 2}"_s).line, u"Script ran."_s);
}

void ScriptsTest::tellsWhatIsWrong()
{
    const Outcome unknown = run(u"set x to\nbeep"_s);
    QVERIFY(unknown.hasFailed);
    QCOMPARE(unknown.line, u"AppleScript error: Line 1: the end of the line is not understood here."_s);
    const Outcome shell = run(u"do shell script \"touch ~/touched\""_s);
    QVERIFY(shell.hasFailed);
    QVERIFY2(isOneClearLine(shell.line), qPrintable(shell.line));
    QVERIFY(!QFileInfo::exists(PrivateDesktop::home(u"touched"_s)));
}

void ScriptsTest::opensAndQuitsAnApplication()
{
    const Outcome opened = run(u"tell application \"Mousepad\" to activate"_s);
    VERIFY_EFFECT(Screen::activeClass() == "Mousepad"_L1, opened);
    QCOMPARE(opened.line, u"Script ran."_s);
    const Outcome asked = run(u"return application \"Mousepad\" is running"_s);
    QCOMPARE(asked.line, u"Script returned: true"_s);
    const Outcome quit = run(u"tell application \"Mousepad\" to quit"_s);
    VERIFY_EFFECT(Screen::windows().isEmpty(), quit);
}

// The File menu's item saves the file.
void ScriptsTest::typesAndPressesAMenuItem()
{
    const QString path = PrivateDesktop::home(u"Documents/typed.txt"_s);
    QVERIFY(TextFields::openFile(path, "", u"mousepad"_s, u"Mousepad"_s));
    const Outcome typed = run(u"tell application \"Mousepad\" to activate\n"
                              "tell application \"System Events\"\n"
                              "keystroke \"one two\"\n"
                              "keystroke return\n"
                              "keystroke \"three\"\n"
                              "tell process \"Mousepad\"\n"
                              "click menu item \"Save\" of menu \"File\" of menu bar 1\n"
                              "end tell\n"
                              "end tell"_s);
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
    QCOMPARE(TextFields::differenceInFile(path, u"one two\nthree"_s), QString());
}

void ScriptsTest::knowsWindowsAndProcesses()
{
    PrivateDesktop::write(PrivateDesktop::home(u"Documents/plan.txt"_s), "a plan");
    QVERIFY(
        PrivateDesktop::open(u"mousepad"_s, {PrivateDesktop::home(u"Documents/plan.txt"_s)}, u"Mousepad"_s));
    const Outcome window = run(u"return name of window 1 of application \"Mousepad\""_s);
    QVERIFY2(window.line.contains("plan.txt"_L1), qPrintable(window.line));
    const Outcome process = run(u"tell application \"System Events\" to return name of first process "
                                "whose frontmost is true"_s);
    QCOMPARE(process.line, u"Script returned: Mousepad"_s);
}

void ScriptsTest::worksOnFiles()
{
    PrivateDesktop::write(PrivateDesktop::home(u"Desktop/a.txt"_s), "a");
    PrivateDesktop::write(PrivateDesktop::home(u"Desktop/b.txt"_s), "b");
    const Outcome outcome =
        run(u"tell application \"Finder\"\n"
            "make new folder at desktop with properties {name:\"Texts\"}\n"
            "move (every file of desktop whose name extension is \"txt\") to folder \"Texts\" "
            "of desktop\n"
            "delete file \"b.txt\" of folder \"Texts\" of desktop\n"
            "return count files of folder \"Texts\" of desktop\n"
            "end tell"_s);
    QCOMPARE(outcome.line, u"Script returned: 1"_s);
    QVERIFY(QFileInfo::exists(PrivateDesktop::home(u"Desktop/Texts/a.txt"_s)));
    QVERIFY(!QFileInfo::exists(PrivateDesktop::home(u"Desktop/Texts/b.txt"_s)));
    const Outcome opened = run(u"tell application \"Finder\" to open folder \"Texts\" of desktop"_s);
    VERIFY_EFFECT(Screen::activeClass().compare("Thunar"_L1, Qt::CaseInsensitive) == 0, opened);
}

// The application pastes what the script has put there, and the script gets what the application copies.
void ScriptsTest::fillsAndReadsTheClipboard()
{
    const QString path = PrivateDesktop::home(u"Documents/pasted.txt"_s);
    QVERIFY(TextFields::openFile(path, "", u"mousepad"_s, u"Mousepad"_s));
    const Outcome pasted = run(u"set the clipboard to \"Größe: 5 €\"\n"
                               "tell application \"Mousepad\" to activate\n"
                               "tell application \"System Events\"\n"
                               "keystroke \"v\" using command down\n"
                               "keystroke \"s\" using command down\n"
                               "end tell\n"
                               "return the clipboard"_s);
    QCOMPARE(pasted.line, u"Script returned: Größe: 5 €"_s);
    QCOMPARE(TextFields::differenceInFile(path, u"Größe: 5 €"_s), QString());
    const Outcome copied = run(u"set the clipboard to \"\"\n"
                               "tell application \"Mousepad\" to activate\n"
                               "tell application \"System Events\"\n"
                               "keystroke \"a\" using command down\n"
                               "keystroke \"c\" using command down\n"
                               "end tell\n"
                               "repeat until (the clipboard) is not \"\"\n"
                               "delay 0.05\n"
                               "end repeat\n"
                               "return the clipboard"_s);
    QCOMPARE(copied.line, u"Script returned: Größe: 5 €"_s);
}

QTEST_MAIN(ScriptsTest)
#include "ScriptsTest.moc"
