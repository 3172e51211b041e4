// SPDX-License-Identifier: Apache-2.0
#include "ActionBench.h"
#include "Actions/Scripts/DesktopScriptHost.h"
#include "Scripting/ScriptInterpreter.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <QTest>

using namespace Qt::StringLiterals;

// What scripts do on the desktop.
class ScriptActionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changesTheDesktop_data();
    void changesTheDesktop();
    void knowsTheDesktop_data();
    void knowsTheDesktop();
    void fails_data();
    void fails();
    void keysAreNotSentWhileTheScreenIsLocked();
    void neverPressesItsOwnControls();
    void worksOnFiles_data();
    void worksOnFiles();
    void readsFolders_data();
    void readsFolders();
};

namespace {

QCoro::Task<QString> described(QString source, Desktop desktop)
{
    DesktopScriptHost host(desktop);
    const ScriptValue value = co_await ScriptInterpreter::run(source, host);
    co_await host.finish();
    co_return ScriptCoercion::source(value);
}

QString outcome(const QString &source, ActionBench &bench)
{
    return ActionBench::outcome(described(source, bench.services()));
}

// Mail is frontmost, with two windows and some controls; Safari runs; Notes is installed.
void prepare(ActionBench &bench)
{
    RecordingWorkspace &workspace = bench.desktop.workspace;
    workspace.install(u"Notes"_s);
    workspace.start(workspace.install(u"Safari"_s));
    const RunningApplication mail = workspace.start(workspace.install(u"Mail"_s));
    workspace.makeFrontmost(mail);
    for (const QString &title : {u"Inbox"_s, u"Drafts"_s})
        workspace.windows.append({0, mail.processIdentifier, u"Mail"_s, title});
    RecordedTree tree;
    const AccessibilityElement bar = tree.add(0, {u"AXMenuBarItem"_s, u"File"_s});
    tree.add(bar, {u"AXMenuItem"_s, u"Save"_s});
    const AccessibilityElement edit = tree.add(0, {u"AXMenuBarItem"_s, u"Edit"_s});
    tree.add(edit, {u"AXMenuItem"_s, u"Copy"_s});
    const AccessibilityElement window = tree.add(0, {QString(), u"Inbox"_s});
    tree.add(window, {u"AXButton"_s, u"Save"_s});
    tree.add(window, {u"AXButton"_s, u"Send"_s});
    bench.desktop.accessibility.trees.insert(mail.processIdentifier, tree);
}

} // namespace

void ScriptActionsTest::changesTheDesktop_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QStringList>("journal");
    const auto row = [](const char *source, const QStringList &journal) {
        QTest::newRow(source) << QString::fromUtf8(source) << journal;
    };
    const QString settle = u"wait 700 ms"_s;
    const QStringList notes{u"open application /Applications/Notes.app"_s, settle};
    row("tell application \"Notes\" to activate", notes);
    row("activate application \"Notes\"", notes);
    row("tell application \"Notes\" to launch", notes);
    row("tell application \"Safari\" to quit", {u"ask Safari to quit"_s, u"wait 600 ms"_s});
    row("quit application \"Notes\"", {});
    row("open location \"https://example.org/a\"", {u"open https://example.org/a"_s, u"wait 1200 ms"_s});
    row("tell application \"Safari\" to open location \"https://example.org\"",
        {u"open https://example.org with /Applications/Safari.app"_s, u"wait 1200 ms"_s});
    row("tell application \"Safari\" to make new tab at end of tabs of window 1 with properties "
        "{URL:\"https://example.org\"}",
        {u"open https://example.org with /Applications/Safari.app"_s, u"wait 1200 ms"_s});
    row("tell application \"Safari\" to make new tab",
        {u"open application /Applications/Safari.app"_s, settle, u"press key command+17"_s});
    row("tell application \"System Events\" to keystroke \"hello\"", {u"type “hello”"_s});
    row("tell application \"System Events\" to keystroke \"c\" using command down",
        {u"press key command+8"_s});
    row("tell application \"System Events\" to keystroke \"z\" using {command down, shift down}",
        {u"press key command+shift+6"_s});
    row("tell application \"System Events\" to keystroke return using option down",
        {u"press key option+36"_s});
    row("tell application \"System Events\" to key code 36", {u"press key 36"_s});
    row("tell application \"System Events\" to key code {125, 36}", {u"press key 125"_s, u"press key 36"_s});
    row("tell application \"System Events\" to tell process \"Mail\" to click button \"Send\" of window 1",
        {u"press AXButton “Send”"_s});
    row("tell application \"System Events\"\ntell process \"Mail\"\nclick menu item \"Save\" of menu "
        "\"File\" of "
        "menu bar item \"File\" of menu bar 1\nend tell\nend tell",
        {u"press AXMenuItem “Save”"_s});
    row("tell application \"System Events\" to set frontmost of process \"Safari\" to true",
        {u"activate Safari"_s});
    row("tell application \"Mail\" to make new outgoing message with properties {subject:\"Lunch & more\", "
        "content:\"Dear Ann,\" & return & \"at noon?\", visible:true}",
        {u"open mailto:?subject=Lunch%20%26%20more&body=Dear%20Ann%2C%0D%0Aat%20noon%3F with "
         "/Applications/Mail.app"_s});
    row("tell application \"Mail\"\n"
        "set m to make new outgoing message with properties {subject:\"Hi\"}\n"
        "tell m\n"
        "make new to recipient at end of to recipients with properties {address:\"ann@example.org\"}\n"
        "make new to recipient with properties {name:\"Bob\", address:\"bob@example.org\"}\n"
        "make new cc recipient at end of cc recipients with properties {address:\"c?x=y@example.org\"}\n"
        "set content to \"Grüße\"\n"
        "end tell\n"
        "activate\n"
        "end tell",
        {u"open application /Applications/Mail.app"_s, settle,
         u"open "
         u"mailto:ann@example.org,bob@example.org?cc=c%3Fx%3Dy@example.org&subject=Hi&body=Gr%C3%BC%C3%9Fe "
         "with /Applications/Mail.app"_s});
    row("tell application \"Mail\"\n"
        "set m to make new outgoing message\n"
        "make new bcc recipient at end of bcc recipients of m with properties {address:\"d@example.org\"}\n"
        "set subject of m to (subject of m) & \"!\"\n"
        "end tell",
        {u"open mailto:?bcc=d@example.org&subject=%21 with /Applications/Mail.app"_s});
}

void ScriptActionsTest::changesTheDesktop()
{
    QFETCH(QString, source);
    ActionBench bench;
    prepare(bench);
    const QString result = outcome(source, bench);
    QVERIFY2(!result.startsWith("Error"_L1), qPrintable(result));
    QTEST(bench.journal(), "journal");
}

void ScriptActionsTest::knowsTheDesktop_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *source, const char *expected) {
        QTest::newRow(source) << QString::fromUtf8(source) << QString::fromUtf8(expected);
    };
    row("return application \"Mail\" is running", "true");
    row("return application \"Notes\" is running", "false");
    row("return running of application \"Notes\"", "false");
    row("tell application \"Mail\" to return frontmost", "true");
    row("tell application \"Safari\" to return frontmost", "false");
    row("tell application \"Mail\" to return name of every window", "{\"Inbox\", \"Drafts\"}");
    row("tell application \"Mail\" to return name of window 2", "\"Drafts\"");
    row("return name of front window of application \"Mail\"", "\"Inbox\"");
    row("tell application \"Mail\" to return count windows", "2");
    row("tell application \"Mail\" to return exists window \"Drafts\"", "true");
    row("tell application \"Mail\" to return exists window \"Sent\"", "false");
    row("tell application \"System Events\" to return name of every process", "{\"Safari\", \"Mail\"}");
    row("tell application \"System Events\" to return name of first process whose frontmost is true",
        "\"Mail\"");
    row("tell application \"System Events\"\nset p to first application process whose frontmost is true\n"
        "return name of p\nend tell",
        "\"Mail\"");
    row("tell application \"System Events\" to return exists process \"Safari\"", "true");
    row("tell application \"System Events\" to return (name of processes) contains \"Notes\"", "false");
    row("tell application \"System Events\" to return name of window 1 of process \"Mail\"", "\"Inbox\"");
    row("tell application \"System Events\" to tell process \"Mail\" to return name of every window whose "
        "name "
        "contains \"raf\"",
        "{\"Drafts\"}");
    row("return (current date) as text", "\"Wednesday, May 1, 2024 at 2:03:07 PM\"");
}

void ScriptActionsTest::knowsTheDesktop()
{
    QFETCH(QString, source);
    ActionBench bench;
    prepare(bench);
    QTEST(outcome(source, bench), "expected");
    QCOMPARE(bench.journal(), QStringList());
}

void ScriptActionsTest::fails_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *source, const char *expected) {
        QTest::newRow(source) << QString::fromUtf8(source) << QString::fromUtf8(expected);
    };
    row("do shell script \"rm -rf ~\"",
        "Scripts can't run shell commands or other programs' code (“do shell script”).");
    row("tell application \"Terminal\" to do script \"ls\"",
        "Scripts can't run shell commands or other programs' code (“do script”).");
    row("run script \"beep\"", "Scripts can't run shell commands or other programs' code (“run script”).");
    row("tell application \"Zanzibar\" to activate", "Couldn't find an app called “Zanzibar”.");
    row("tell application \"Mail\"\nset m to make new outgoing message\nsend m\nend tell",
        "Scripts can't send messages; without “send”, the message is opened in the mail program, where you "
        "can send it.");
    row("tell application \"Mail\" to tell (make new outgoing message) to make new to recipient with "
        "properties {address:\"ann\"}",
        "“ann” is no mail address.");
    row("tell application \"Mail\" to make new to recipient with properties {address:\"a@b\"}",
        "Can’t get outgoing message.");
    row("tell application \"Zanzibar\" to make new outgoing message",
        "Couldn't find an app called “Zanzibar”.");
    row("tell application \"Mail\" to play", "Mail doesn’t understand “play”.");
    row("tell application \"Mail\" to get colour", "Can’t get colour of application \"Mail\".");
    row("tell application \"System Events\" to set frontmost of every process whose name is \"Nope\" to true",
        "Can’t set frontmost of {}.");
    row("tell application \"System Events\" to set frontmost of process \"Nope\" to true",
        "Can’t get process \"Nope\" of application \"System Events\".");
    row("tell application \"Mail\" to get name of window 7", "Can’t get window 7 of application \"Mail\".");
    row("tell application \"Mail\" to get size of window 1",
        "Can’t get size of window 1 of application \"Mail\".");
    row("tell application \"System Events\" to key code 300", "There is no key with the code 300.");
    row("tell application \"System Events\" to keystroke \"a\" using yes", "“yes” is no modifier key.");
    row("tell application \"System Events\" to tell process \"Notes\" to click button 1",
        "“Notes” is not running.");
    row("tell application \"System Events\" to tell process \"Mail\" to click menu item \"Send\" of menu bar "
        "1",
        "Can’t get menu item \"Send\" of menu bar 1 of process \"Mail\" of application \"System Events\".");
    row("tell application \"System Events\" to tell process \"Mail\" to click menu item \"Save\" of menu "
        "\"Edit\"",
        "Can’t get menu item \"Save\" of menu \"Edit\" of process \"Mail\" of application \"System "
        "Events\".");
    row("open location \"no address\"", "“no address” isn't a valid address.");
    row("tell application \"Mail\" to open \"/no/such/file\"", "Nothing exists at /no/such/file.");
    row("path to library folder", "The folder “library folder” isn't known on this computer.");
}

void ScriptActionsTest::fails()
{
    QFETCH(QString, source);
    QFETCH(QString, expected);
    ActionBench bench;
    prepare(bench);
    QCOMPARE(outcome(source, bench), u"Error: "_s + expected);
    QCOMPARE(bench.journal(), QStringList());
}

void ScriptActionsTest::keysAreNotSentWhileTheScreenIsLocked()
{
    ActionBench bench;
    prepare(bench);
    bench.desktop.session.locked = true;
    for (const QString &words :
         {u"keystroke \"a\""_s, u"key code 36"_s, u"click button \"Send\" of process \"Mail\""_s}) {
        const QString result = outcome(u"tell application \"System Events\" to "_s + words, bench);
        QVERIFY2(result.startsWith("Error: "_L1), qPrintable(result));
    }
    QCOMPARE(bench.journal(), QStringList());
}

void ScriptActionsTest::neverPressesItsOwnControls()
{
    ActionBench bench;
    bench.desktop.workspace.start(u"Orvane"_s);
    bench.desktop.workspace.running.last().processIdentifier = QCoreApplication::applicationPid();
    RecordedTree tree;
    tree.add(0, {u"AXButton"_s, u"Allow"_s});
    bench.desktop.accessibility.trees.insert(QCoreApplication::applicationPid(), tree);
    QCOMPARE(outcome(u"tell application \"System Events\" to click button \"Allow\" of process \"Orvane\""_s,
                     bench),
             u"Error: Scripts can't control this program."_s);
    QCOMPARE(bench.journal(), QStringList());
}

void ScriptActionsTest::worksOnFiles_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QStringList>("there"); // in the home folder
    QTest::addColumn<QStringList>("gone");
    const auto row = [](const char *source, const QStringList &there, const QStringList &gone) {
        QTest::newRow(source) << u"tell application \"Finder\" to "_s + QString::fromUtf8(source) << there
                              << gone;
    };
    const QString a = u"Desktop/a.txt"_s;
    row("make new folder at desktop with properties {name:\"New\"}", {u"Desktop/New"_s}, {});
    row("make new folder with properties {name:\"New\"}", {u"Desktop/New"_s}, {});
    row("make new folder at folder \"Documents\" of home with properties {name:\"New\"}",
        {u"Documents/New"_s}, {});
    row("make new folder at (path to documents folder) with properties {name:\"New\"}", {u"Documents/New"_s},
        {});
    row("make new folder at POSIX file \"~/Documents\" with properties {name:\"New\"}", {u"Documents/New"_s},
        {});
    row("delete file \"a.txt\" of desktop", {u"Desktop/b.txt"_s}, {a});
    row("delete file \"a.txt\"", {u"Desktop/b.txt"_s}, {a});
    row("move file \"a.txt\" of desktop to trash", {u"Desktop/b.txt"_s}, {a});
    row("move file \"a.txt\" of desktop to folder \"Documents\" of home", {u"Documents/a.txt"_s}, {a});
    row("move every file of desktop to folder \"Documents\" of home",
        {u"Documents/a.txt"_s, u"Documents/b.txt"_s, u"Documents/c.pdf"_s, u"Desktop/Sub"_s}, {a});
    row("move (every file of desktop whose name extension is \"txt\") to folder \"Documents\" of home",
        {u"Documents/a.txt"_s, u"Documents/b.txt"_s, u"Desktop/c.pdf"_s}, {a, u"Desktop/b.txt"_s});
    row("delete (every file of desktop whose name starts with \"b\")", {a, u"Desktop/c.pdf"_s},
        {u"Desktop/b.txt"_s});
    row("duplicate file \"a.txt\" of desktop to folder \"Documents\" of home", {a, u"Documents/a.txt"_s}, {});
    row("duplicate folder \"Sub\" of desktop to folder \"Documents\" of home", {u"Documents/Sub/d.txt"_s},
        {});
    row("duplicate file \"a.txt\" of desktop", {a, u"Desktop/a.txt copy"_s}, {});
    row("set name of file \"a.txt\" of desktop to \"z.txt\"", {u"Desktop/z.txt"_s}, {a});
}

void ScriptActionsTest::worksOnFiles()
{
    QFETCH(QString, source);
    QFETCH(QStringList, there);
    QFETCH(QStringList, gone);
    ActionBench bench;
    // The trash is there.
    QVERIFY(QDir(bench.home.path()).mkdir(u"data"_s));
    qputenv("XDG_DATA_HOME", bench.path(u"data"_s).toLocal8Bit());
    for (const QString &name : {u"Desktop/a.txt"_s, u"Desktop/b.txt"_s, u"Desktop/c.pdf"_s,
                                u"Desktop/Sub/d.txt"_s, u"Documents/e.txt"_s})
        bench.addFile(name);
    const QString result = outcome(source, bench);
    QVERIFY2(!result.startsWith("Error"_L1), qPrintable(result));
    for (const QString &name : there)
        QVERIFY2(QFileInfo::exists(bench.path(name)), qPrintable(name + u" is missing: "_s + result));
    for (const QString &name : gone)
        QVERIFY2(!QFileInfo::exists(bench.path(name)), qPrintable(name + u" is still there: "_s + result));
}

void ScriptActionsTest::readsFolders_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected"); // HOME stands for the home folder
    const auto row = [](const char *source, const char *expected) {
        QTest::newRow(source) << QString::fromUtf8(source) << QString::fromUtf8(expected);
    };
    row("tell application \"Finder\" to return name of every file of desktop", "{\"a.txt\", \"b.pdf\"}");
    row("tell application \"Finder\" to return name of every folder of desktop", "{\"Sub\"}");
    row("tell application \"Finder\" to return name of every item of desktop",
        "{\"a.txt\", \"b.pdf\", \"Sub\"}");
    row("tell application \"Finder\" to return count files of desktop", "2");
    row("tell application \"Finder\" to return name of file 1 of folder \"Sub\" of desktop", "\"c.txt\"");
    row("tell application \"Finder\" to return name of first file of desktop whose name extension is \"pdf\"",
        "\"b.pdf\"");
    row("tell application \"Finder\" to return exists file \"a.txt\" of desktop", "true");
    row("tell application \"Finder\" to return exists folder \"Nope\" of desktop", "false");
    row("tell application \"Finder\"\nif exists folder \"Sub\" then return \"yes\"\nend tell", "\"yes\"");
    row("tell application \"Finder\"\nset f to folder \"Sub\" of desktop\nreturn name of files of f\nend "
        "tell",
        "{\"c.txt\"}");
    row("tell application \"Finder\" to return kind of item \"Sub\" of desktop", "\"Folder\"");
    row("return POSIX path of (path to desktop folder)", "\"HOME/Desktop\"");
    row("return POSIX path of (path to home folder)", "\"HOME\"");
    row("return (path to documents folder as text) & \"/x\"", "\"HOME/Documents/x\"");
    row("tell application \"Finder\" to return name of every file of folder \"Nope\" of desktop",
        "Error: Couldn't read HOME/Desktop/Nope.");
    row("tell application \"Finder\" to delete file \"nope\" of desktop",
        "Error: “nope” couldn't be moved to the Trash because it doesn't exist.");
    row("tell application \"Finder\" to make new folder at desktop with properties {name:\"Sub\"}",
        "Error: “Sub” exists already.");
    row("tell application \"Finder\" to move file \"a.txt\" of desktop to folder \"Sub\" of home",
        "Error: “a.txt” couldn't be moved: No such file or directory.");
    row("tell application \"Finder\" to set name of file \"a.txt\" of desktop to \"b.pdf\"",
        "Error: “a.txt” couldn't be moved: “b.pdf” exists already.");
    row("tell application \"Finder\" to empty trash", "Error: Finder doesn’t understand “empty”.");
}

void ScriptActionsTest::readsFolders()
{
    QFETCH(QString, source);
    ActionBench bench;
    for (const QString &name : {u"Desktop/a.txt"_s, u"Desktop/b.pdf"_s, u"Desktop/Sub/c.txt"_s})
        bench.addFile(name);
    QTEST(outcome(source, bench).replace(bench.home.path(), u"HOME"_s), "expected");
}

QTEST_GUILESS_MAIN(ScriptActionsTest)
#include "ScriptActionsTest.moc"
