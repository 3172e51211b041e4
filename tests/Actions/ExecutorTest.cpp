// SPDX-License-Identifier: Apache-2.0
#include "ActionBench.h"
#include "Actions/ActionDefinition.h"
#include "Actions/Operations/Applications.h"
#include "Base/PlatformWords.h"

#include <QTest>

using namespace Qt::StringLiterals;

class ExecutorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void missingArgumentsFailBeforeAnythingIsTouched_data();
    void missingArgumentsFailBeforeAnythingIsTouched();
    void unknownActionsFail_data();
    void unknownActionsFail();
    void actionsAndWhatTheyDo_data();
    void actionsAndWhatTheyDo();
    void quittingAnApplication();
    void quittingAnApplicationThatShowsASavePrompt();
    void quittingAnApplicationThatIsNotRunning();
    void aNewTabNeedsThePermissionAfterTheLaunch();
    void creatingAFolder_data();
    void creatingAFolder();
    void creatingAFolderThatExistsIsNoError();
    void creatingAFolderOverAFilePassesTheErrorThrough();
    void screenshotsAreNamedAfterTheTime_data();
    void screenshotsAreNamedAfterTheTime();
    void aScreenshotsNameHasTheUsersDigits();
    void findingFiles_data();
    void findingFiles();
    void openingAPath();
    void openingAPathThatDoesNotExist();
    void trashingAFile();
    void trashingAFileThatDoesNotExist();
    void aResultIsAlwaysOneLine_data();
    void aResultIsAlwaysOneLine();
    void actionsOnWhateverIsFrontmost_data();
    void actionsOnWhateverIsFrontmost();
    void theFocusReturns();
    void theFocusCannotReturnToAnEndedApplication();
    void aRefusedActivationPassesThrough();
};

void ExecutorTest::missingArgumentsFailBeforeAnythingIsTouched_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *reply, const char *message) {
        QTest::newRow(reply) << QString::fromUtf8(reply) << QString::fromUtf8(message);
    };

    row(R"({"action":"open_app","app":"  "})", "Missing app name.");
    row(R"({"action":"open_app"})", "Missing app name.");
    row(R"({"action":"focus_app"})", "Missing app name.");
    row(R"({"action":"quit_app"})", "Missing app name.");
    row(R"({"action":"open_url","app":"Safari"})", "Missing url.");
    row(R"({"action":"web_search","query":" \n "})", "Missing query.");
    row(R"({"action":"type_text"})", "Missing text.");
    row(R"({"action":"type_text","text":""})", "Missing text.");
    row(R"({"action":"press_key","modifiers":"command"})", "Missing key.");
    row(R"({"action":"click"})", "Missing label.");
    row(R"({"action":"create_folder","in":"Desktop"})", "Missing folder name.");
    row(R"({"action":"open_path"})", "Missing path.");
    row(R"({"action":"trash"})", "Missing path.");
    row(R"({"action":"applescript","script":""})", "Missing script.");
}

void ExecutorTest::missingArgumentsFailBeforeAnythingIsTouched()
{
    QFETCH(QString, reply);
    QFETCH(QString, message);
    ActionBench bench;
    bench.desktop.accessibility.trusted = false;
    QCOMPARE(bench.run(reply), u"Error: "_s + message);
    QCOMPARE(bench.journal(), QStringList());
}

void ExecutorTest::unknownActionsFail_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("\"done\" is left to the caller") << u"done"_s;
    QTest::newRow("a name of no action") << u"fly"_s;
    QTest::newRow("blanks around a name") << u" click "_s;
    QTest::newRow("no name") << u""_s;
}

void ExecutorTest::unknownActionsFail()
{
    QFETCH(QString, name);
    ActionBench bench;
    QCOMPARE(bench.run(uR"({"action":"%1","app":"Safari"})"_s.arg(name)),
             u"Error: Unknown action “%1”."_s.arg(name));
    QCOMPARE(bench.journal(), QStringList());
}

void ExecutorTest::actionsAndWhatTheyDo_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("result");
    QTest::addColumn<QStringList>("done");
    const auto row = [](const char *reply, const char *result, const QStringList &done) {
        QTest::newRow(reply) << QString::fromUtf8(reply) << QString::fromUtf8(result) << done;
    };

    row(R"({"action":"open_app","app":"chrome"})", "Google Chrome is now frontmost.",
        {u"open application /Applications/Google Chrome.app"_s, u"wait 700 ms"_s});
    row(R"({"action":"focus_app","app":"chrome"})", "Google Chrome is now frontmost.",
        {u"open application /Applications/Google Chrome.app"_s, u"wait 700 ms"_s});
    row(R"({"action":"open_app","app":"Nonexistent"})", "Error: Couldn't find an app called “Nonexistent”.",
        {});
    row(R"({"action":"open_url","url":"example.org"})", "Opened example.org in the default browser.",
        {u"open https://example.org"_s, u"wait 1200 ms"_s});
    row(R"({"action":"open_url","url":"http://example.org/a","app":"chrome"})",
        "Opened example.org in Google Chrome.",
        {u"open http://example.org/a with /Applications/Google Chrome.app"_s, u"wait 1200 ms"_s});
    row(R"({"action":"open_url","url":"file:///Users"})", "Error: “file:///Users” isn't a valid address.",
        {});
    row(R"({"action":"web_search","query":"cheap flights"})", "Opened www.google.com in the default browser.",
        {u"open https://www.google.com/search?q=cheap%20flights"_s, u"wait 1200 ms"_s});
    row(R"({"action":"web_search","query":"a&b","app":"chrome"})", "Opened www.google.com in Google Chrome.",
        {u"open https://www.google.com/search?q=a&b with /Applications/Google Chrome.app"_s,
         u"wait 1200 ms"_s});
    row(R"({"action":"new_tab"})", "Opened a new tab.", {u"press key command+17"_s});
    row(R"({"action":"new_tab","app":"chrome"})", "Opened a new tab.",
        {u"open application /Applications/Google Chrome.app"_s, u"wait 700 ms"_s, u"press key command+17"_s});
    row(R"({"action":"new_tab","app":"Mosaic"})", "Error: Couldn't find an app called “Mosaic”.", {});
    row(R"({"action":"type_text","text":"  "})", "Typed text.", {u"type “  ”"_s});
    row(R"({"action":"type_text","text":" a "})", "Typed text.", {u"type “ a ”"_s});
    row(R"({"action":"press_key","key":"Return"})", "Pressed Return.", {u"press key 36"_s});
    row(R"({"action":"press_key","key":" Tab ","modifiers":"Shift+Command"})", "Pressed Tab.",
        {u"press key command+shift+48"_s});
    row(R"({"action":"press_key","key":"a","modifiers":"cmd, ,shift"})", "Pressed a.",
        {u"press key command+shift+0"_s});
    row(R"({"action":"press_key","key":"a","modifiers":"alt ctrl"})", "Pressed a.",
        {u"press key option+control+0"_s});
    row(R"({"action":"press_key","key":"l","modifiers":["command","shift"]})", "Pressed l.",
        {u"press key command+shift+37"_s});
    row(R"({"action":"press_key","key":"f5"})", "Error: Unsupported key “f5”.", {});
    row(R"({"action":"click","label":"ok"})", "Clicked “ok”.", {u"press AXButton “OK”"_s});
    row(R"({"action":"click","label":"No"})", "Error: Couldn't find a control labelled “No”.", {});
    row(R"({"action":"list_windows"})", "Notes — Shopping", {});
    row(R"({"action":"read_ui"})", "Button: OK", {});
    row(R"({"action":"applescript","script":"beep"})", "Script ran.", {u"run script beep"_s});
}

void ExecutorTest::actionsAndWhatTheyDo()
{
    QFETCH(QString, reply);
    for (const bool answersLater : {false, true}) {
        ActionBench bench;
        bench.desktop.journal.answersLater = answersLater;
        bench.desktop.workspace.install(u"Google Chrome"_s);
        const RunningApplication notes = bench.desktop.workspace.start(u"Notes"_s);
        bench.desktop.workspace.makeFrontmost(notes);
        bench.desktop.workspace.addWindow(u"Notes"_s, u"Shopping"_s);
        RecordedTree tree;
        tree.add(0, {u"AXButton"_s, u"OK"_s});
        bench.desktop.accessibility.trees.insert(notes.processIdentifier, tree);
        QTEST(bench.run(reply), "result");
        QTEST(bench.journal(), "done");
    }
}

void ExecutorTest::quittingAnApplication()
{
    ActionBench bench;
    bench.desktop.workspace.start(u"Google Chrome"_s);
    QCOMPARE(bench.run(uR"({"action":"quit_app","app":"Chrome"})"_s), u"Chrome quit."_s);
    const QStringList expected{u"ask Google Chrome to quit"_s, u"wait 600 ms"_s};
    QCOMPARE(bench.journal(), expected);
}

void ExecutorTest::quittingAnApplicationThatShowsASavePrompt()
{
    ActionBench bench;
    const RunningApplication notes = bench.desktop.workspace.start(u"Notes"_s);
    bench.desktop.workspace.waitingToQuit.insert(notes.processIdentifier);
    QCOMPARE(bench.run(uR"({"action":"quit_app","app":"Notes"})"_s),
             u"Asked Notes to quit (it may be waiting on a save prompt)."_s);
    const QStringList expected{u"ask Notes to quit"_s, u"wait 600 ms"_s};
    QCOMPARE(bench.journal(), expected);
}

void ExecutorTest::quittingAnApplicationThatIsNotRunning()
{
    ActionBench bench;
    bench.desktop.workspace.install(u"Notes"_s);
    QCOMPARE(bench.run(uR"({"action":"quit_app","app":"Notes"})"_s), u"Notes is not running."_s);
    QCOMPARE(bench.journal(), QStringList());
}

void ExecutorTest::aNewTabNeedsThePermissionAfterTheLaunch()
{
    ActionBench bench;
    bench.desktop.workspace.install(u"Safari"_s);
    bench.desktop.accessibility.trusted = false;
    QCOMPARE(bench.run(uR"({"action":"new_tab","app":"Safari"})"_s),
             u"Error: "_s + PlatformWords::current().keysRefusal);
    const QStringList expected{u"open application /Applications/Safari.app"_s, u"wait 700 ms"_s,
                               u"ask for the Accessibility permission"_s};
    QCOMPARE(bench.journal(), expected);
}

void ExecutorTest::creatingAFolder_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("path");

    QTest::newRow("on the Desktop unless told")
        << uR"({"action":"create_folder","name":"Projects"})"_s << u"Desktop/Projects"_s;
    QTest::newRow("in a location") << uR"({"action":"create_folder","name":"Projects","in":"my documents"})"_s
                                   << u"Documents/Projects"_s;
    QTest::newRow("\"location\" is a second name for \"in\"")
        << uR"({"action":"create_folder","name":"A","location":"Downloads"})"_s << u"Downloads/A"_s;
    QTest::newRow("\"in\" comes before \"location\"")
        << uR"({"action":"create_folder","name":"A","location":"Downloads","in":"Pictures"})"_s
        << u"Pictures/A"_s;
    QTest::newRow("nested folders") << uR"({"action":"create_folder","name":" a/b/c "})"_s
                                    << u"Desktop/a/b/c"_s;
    QTest::newRow("an accented name")
        << uR"({"action":"create_folder","name":"Été 日本"})"_s << u"Desktop/Été 日本"_s;
}

void ExecutorTest::creatingAFolder()
{
    QFETCH(QString, reply);
    QFETCH(QString, path);
    ActionBench bench;
    const QString created = bench.path(path);
    QCOMPARE(bench.run(reply), u"Created folder at %1."_s.arg(created));
    QVERIFY(QFileInfo(created).isDir());
    QCOMPARE(bench.journal(), QStringList(u"reveal "_s + created));
}

void ExecutorTest::creatingAFolderThatExistsIsNoError()
{
    ActionBench bench;
    bench.addFile(u"Desktop/Projects/kept.txt"_s);
    QCOMPARE(bench.run(uR"({"action":"create_folder","name":"Projects"})"_s),
             u"Created folder at %1."_s.arg(bench.path(u"Desktop/Projects"_s)));
    QVERIFY(QFile::exists(bench.path(u"Desktop/Projects/kept.txt"_s)));
}

void ExecutorTest::creatingAFolderOverAFilePassesTheErrorThrough()
{
    ActionBench bench;
    bench.addFile(u"Desktop/Projects"_s);
    const QString outcome = bench.run(uR"({"action":"create_folder","name":"Projects"})"_s);
    QVERIFY2(outcome.startsWith(u"Error: Couldn't create the folder “Projects”"_s), qPrintable(outcome));
    QCOMPARE(bench.journal(), QStringList());
}

void ExecutorTest::aScreenshotsNameHasTheUsersDigits()
{
    const auto restore = qScopeGuard([locale = QLocale()] { QLocale::setDefault(locale); });
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    ActionBench bench;
    QVERIFY(QDir(bench.home.path()).mkpath(u"Downloads"_s));
    const QString path = bench.path(u"Downloads/Screenshot ٢٠٢٤-٠٥-٠١ at ١٤.٠٣.٠٧.png"_s);
    QCOMPARE(bench.run(uR"({"action":"screenshot"})"_s), u"Saved screenshot to %1."_s.arg(path));
}

void ExecutorTest::screenshotsAreNamedAfterTheTime_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("folder");

    QTest::newRow("in Downloads unless told") << uR"({"action":"screenshot"})"_s << u"Downloads"_s;
    QTest::newRow("in a location") << uR"({"action":"screenshot","save_to":"desktop"})"_s << u"Desktop"_s;
    QTest::newRow("\"folder\" is a second name for \"save_to\"")
        << uR"({"action":"screenshot","folder":"Pictures"})"_s << u"Pictures"_s;
}

void ExecutorTest::screenshotsAreNamedAfterTheTime()
{
    QFETCH(QString, reply);
    QFETCH(QString, folder);
    ActionBench bench;
    QVERIFY(QDir(bench.home.path()).mkpath(folder));
    const QString path = bench.path(folder + u"/Screenshot 2024-05-01 at 14.03.07.png"_s);
    QCOMPARE(bench.run(reply), u"Saved screenshot to %1."_s.arg(path));
    QVERIFY(QFile::exists(path));
}

void ExecutorTest::findingFiles_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("result");

    const QString pdf = u"Found 1 file(s), newest first: a.pdf. Revealed “a.pdf” in Finder."_s;
    QTest::newRow("by extension") << uR"({"action":"find_files","folder":"downloads","extension":"pdf"})"_s
                                  << pdf;
    QTest::newRow("\"type\" is a second name, and Downloads the default")
        << uR"({"action":"find_files","type":"pdf"})"_s << pdf;
    QTest::newRow("\"extension\" comes before \"type\"")
        << uR"({"action":"find_files","type":"txt","extension":"pdf"})"_s << pdf;
    QTest::newRow("by name") << uR"({"action":"find_files","query":"A."})"_s << pdf;
    QTest::newRow("none") << uR"({"action":"find_files","query":"z"})"_s
                          << u"No matching files in Downloads."_s;
    QTest::newRow("a folder that is not there")
        << uR"({"action":"find_files","folder":"Attic"})"_s << u"Error: Couldn't read Attic."_s;
}

void ExecutorTest::findingFiles()
{
    QFETCH(QString, reply);
    ActionBench bench;
    bench.addFile(u"Downloads/a.pdf"_s);
    bench.addFile(u"Downloads/b.txt"_s);
    QTEST(bench.run(reply), "result");
}

void ExecutorTest::openingAPath()
{
    ActionBench bench;
    bench.addFile(u"Downloads/my file.pdf"_s);
    bench.desktop.workspace.opensURLs = false;
    QCOMPARE(bench.run(uR"({"action":"open_path","path":"Downloads/my file.pdf"})"_s),
             u"Opened my file.pdf."_s);
    const QString location =
        QUrl::fromLocalFile(bench.path(u"Downloads/my file.pdf"_s)).toString(QUrl::FullyEncoded);
    QCOMPARE(bench.journal(), QStringList(u"open "_s + location));
    QCOMPARE(bench.run(uR"({"action":"open_path","path":"my downloads"})"_s), u"Opened Downloads."_s);
}

void ExecutorTest::openingAPathThatDoesNotExist()
{
    ActionBench bench;
    QCOMPARE(bench.run(uR"({"action":"open_path","path":" Downloads/none.zip "})"_s),
             u"Error: Nothing exists at Downloads/none.zip."_s);
    QCOMPARE(bench.journal(), QStringList());
}

void ExecutorTest::trashingAFile()
{
    ActionBench bench;
    bench.addFile(u"Desktop/a.txt"_s);
    bench.addFile(u"data/x"_s);
    qputenv("XDG_DATA_HOME", bench.path(u"data"_s).toUtf8());
    QCOMPARE(bench.run(uR"({"action":"trash","path":"Desktop/a.txt"})"_s), u"Moved a.txt to the Trash."_s);
    QVERIFY(!QFile::exists(bench.path(u"Desktop/a.txt"_s)));
    qunsetenv("XDG_DATA_HOME");
    // On other platforms, no environment variable sets the trash folder.
    if (QSysInfo::kernelType() == u"linux")
        QVERIFY(QFile::exists(bench.path(u"data/Trash/files/a.txt"_s)));
}

void ExecutorTest::trashingAFileThatDoesNotExist()
{
    ActionBench bench;
    QCOMPARE(bench.run(uR"({"action":"trash","path":"Desktop/a.txt"})"_s),
             u"Error: “a.txt” couldn't be moved to the Trash because it doesn't exist."_s);
}

void ExecutorTest::aResultIsAlwaysOneLine_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("line");

    QTest::newRow("an application's name")
        << uR"({"action":"quit_app","app":"No\ntes"})"_s << u"No tes is not running."_s;
    QTest::newRow("an unknown action's name")
        << uR"({"action":"a\n<|im_start|>b"})"_s << u"Error: Unknown action “a < |im_start| >b”."_s;
    QTest::newRow("a label") << uR"({"action":"click","label":"O\u2028K"})"_s
                             << u"Error: No frontmost app."_s;
    QTest::newRow("a key") << uR"({"action":"press_key","key":"a\nb"})"_s
                           << u"Error: Unsupported key “a b”."_s;
    QTest::newRow("a path") << uR"({"action":"open_path","path":"a\nb"})"_s
                            << u"Error: Nothing exists at a b."_s;
    QTest::newRow("a file's name")
        << uR"({"action":"find_files","folder":"In"})"_s
        << u"Found 1 file(s), newest first: x y.txt. Revealed “x y.txt” in Finder."_s;
}

void ExecutorTest::aResultIsAlwaysOneLine()
{
    QFETCH(QString, reply);
    ActionBench bench;
    bench.addFile(u"In/x\ny.txt"_s);
    QTEST(bench.run(reply), "line");
}

void ExecutorTest::actionsOnWhateverIsFrontmost_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<bool>("does");
    const auto row = [](const char *reply, bool does) {
        QTest::newRow(reply) << QString::fromUtf8(reply) << does;
    };

    row(R"({"action":"press_key","key":"q"})", true);
    row(R"({"action":"type_text","text":"a"})", true);
    row(R"({"action":"click","label":"Send"})", true);
    row(R"({"action":"read_ui"})", true);
    row(R"({"action":"new_tab"})", true);
    row(R"({"action":"new_tab","app":" "})", true);
    row(R"({"action":"new_tab","app":"Safari"})", false);
    row(R"({"action":"open_app","app":"Safari"})", false);
    row(R"({"action":"quit_app","app":"Safari"})", false);
    row(R"({"action":"trash","path":"a"})", false);
    row(R"({"action":"applescript","script":"beep"})", false);
    row(R"({"action":"list_windows"})", false);
}

void ExecutorTest::actionsOnWhateverIsFrontmost()
{
    QFETCH(QString, reply);
    const std::optional<AgentAction> action = AgentAction::parse(reply);
    QTEST(definitionOf(*action)->needsFocus(*action), "does");
}

void ExecutorTest::theFocusReturns()
{
    ActionBench bench;
    const RunningApplication notes = bench.desktop.workspace.start(u"Notes"_s);
    bench.desktop.workspace.makeFrontmost(bench.desktop.workspace.start(u"Terminal"_s));
    QCOMPARE(bench.outcome(Applications::returnTo(notes, bench.services())), u"done"_s);
    QCOMPARE(bench.journal(), QStringList(u"activate Notes"_s));
    QCOMPARE(bench.desktop.workspace.frontmostProcess, std::optional(notes.processIdentifier));
}

void ExecutorTest::theFocusCannotReturnToAnEndedApplication()
{
    ActionBench bench;
    const RunningApplication notes = bench.desktop.workspace.start(u"Notes"_s);
    bench.desktop.workspace.running.clear();
    QCOMPARE(bench.outcome(Applications::returnTo(notes, bench.services())),
             u"Error: “Notes” is no longer open, so nothing was done."_s);
    QCOMPARE(bench.journal(), QStringList());
}

void ExecutorTest::aRefusedActivationPassesThrough()
{
    ActionBench bench;
    const RunningApplication notes = bench.desktop.workspace.start(u"Notes"_s);
    bench.desktop.journal.failures.insert(RecordedOperation::Activate, u"It stays behind."_s);
    QCOMPARE(bench.outcome(Applications::returnTo(notes, bench.services())), u"Error: It stays behind."_s);
}

QTEST_GUILESS_MAIN(ExecutorTest)
#include "ExecutorTest.moc"
