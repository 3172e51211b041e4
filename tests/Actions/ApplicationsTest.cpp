// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/Applications.h"
#include "ActionBench.h"
#include "Support/Awaited.h"

#include <QTest>

using namespace Qt::StringLiterals;

class ApplicationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theAliasTableIsExact();
    void runningApplicationsAreFoundByName_data();
    void runningApplicationsAreFoundByName();
    void applicationsWithoutANameAreSkipped();
    void backgroundApplicationsAreNotFoundRunning();
    void installedApplicationsAreFoundByName_data();
    void installedApplicationsAreFoundByName();
    void theEarlierFolderWinsForAnExactName();
    void aRunningApplicationWinsOverEveryInstalledOne();
    void aRunningApplicationWithoutABundleIsLookedUpOnDisk();
    void aRoleNameFindsTheRunningDefault();
    void anExactNameComesBeforeTheRole();
    void theRoleComesBeforeAPartialMatch();
    void anAliasIsResolvedBeforeTheRole();
    void allNamesOfAnApplicationAreTriedInOrder_data();
    void allNamesOfAnApplicationAreTriedInOrder();
    void launchingOpensSettlesAndNamesTheApplication();
    void launchingARunningApplicationBringsItForward();
    void launchingAnUnknownApplicationFails();
    void thePlatformsErrorPassesThrough();

private:
    static QString runningName(ActionBench &bench, const QString &name)
    {
        const auto application = Awaited::result(Applications::running(name, bench.services()));
        return application ? application->localizedName.value_or(u"(no name)"_s) : QString();
    }

    static QString location(ActionBench &bench, const QString &name)
    {
        const auto bundle = Awaited::result(Applications::appURL(name, bench.services()));
        return bundle ? bundle->location : QString();
    }
};

void ApplicationsTest::theAliasTableIsExact()
{
    const QHash<QString, QString> expected{
        {u"vscode"_s, u"Visual Studio Code"_s},
        {u"vs code"_s, u"Visual Studio Code"_s},
        {u"code"_s, u"Visual Studio Code"_s},
        {u"chrome"_s, u"Google Chrome"_s},
        {u"brave"_s, u"Brave Browser"_s},
        {u"word"_s, u"Microsoft Word"_s},
        {u"excel"_s, u"Microsoft Excel"_s},
        {u"settings"_s, u"System Settings"_s},
        {u"system preferences"_s, u"System Settings"_s},
        {u"terminal"_s, u"Terminal"_s},
    };
    QCOMPARE(Applications::aliases(), expected);
}

void ApplicationsTest::runningApplicationsAreFoundByName_data()
{
    QTest::addColumn<QStringList>("running");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("found");

    const QStringList browsers{u"Google Chrome Canary"_s, u"Google Chrome"_s, u"Brave Browser"_s};
    QTest::newRow("exact") << browsers << u"Google Chrome"_s << u"Google Chrome"_s;
    QTest::newRow("letter case does not matter") << browsers << u"google CHROME"_s << u"Google Chrome"_s;
    QTest::newRow("through an alias") << browsers << u"chrome"_s << u"Google Chrome"_s;
    QTest::newRow("through an alias in upper case") << browsers << u"BRAVE"_s << u"Brave Browser"_s;
    QTest::newRow("the first that contains the name") << browsers << u"google"_s << u"Google Chrome Canary"_s;
    QTest::newRow("the text itself is contained, not its alias")
        << QStringList{u"Finder"_s, u"Xcode"_s} << u"code"_s << u"Xcode"_s;
    QTest::newRow("the alias alone is not contained")
        << QStringList{u"My Visual Studio Code Fork"_s} << u"vscode"_s << QString();
    QTest::newRow("accents may be written either way")
        << QStringList{u"Cafe\u0301"_s} << u"café"_s << u"Cafe\u0301"_s;
    QTest::newRow("none") << browsers << u"Notes"_s << QString();
    QTest::newRow("nothing runs") << QStringList() << u"Notes"_s << QString();
}

void ApplicationsTest::runningApplicationsAreFoundByName()
{
    QFETCH(QStringList, running);
    QFETCH(QString, name);
    ActionBench bench;
    for (const QString &application : std::as_const(running))
        bench.desktop.workspace.start(application);
    QTEST(runningName(bench, name), "found");
}

void ApplicationsTest::applicationsWithoutANameAreSkipped()
{
    ActionBench bench;
    bench.desktop.workspace.start(u"Nameless"_s);
    bench.desktop.workspace.running.first().localizedName.reset();
    bench.desktop.workspace.start(u"Notes"_s);
    QCOMPARE(runningName(bench, u"notes"_s), u"Notes"_s);
    QCOMPARE(runningName(bench, u"nameless"_s), QString());
}

void ApplicationsTest::backgroundApplicationsAreNotFoundRunning()
{
    ActionBench bench;
    const ApplicationBundle bundle = bench.desktop.workspace.install(u"Clipper"_s, u"/System/Applications"_s);
    bench.desktop.workspace.start(u"Clipper"_s);
    bench.desktop.workspace.running.first().isRegular = false;
    QCOMPARE(runningName(bench, u"Clipper"_s), QString());
    QCOMPARE(location(bench, u"Clipper"_s), bundle.location);
}

void ApplicationsTest::installedApplicationsAreFoundByName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("found");

    QTest::newRow("exact") << u"Safari"_s << u"/Applications/Safari.app"_s;
    QTest::newRow("an alias, in a later folder")
        << u"Settings"_s << u"/System/Applications/System Settings.app"_s;
    QTest::newRow("upper case only") << u"TERMINAL"_s << u"/System/Applications/Utilities/Terminal.app"_s;
    QTest::newRow("the first partial match") << u"calc"_s << u"/Applications/Calcbook.app"_s;
    QTest::newRow("an exact name in a later folder beats a partial one")
        << u"calculator"_s << u"/System/Applications/Calculator.app"_s;
    QTest::newRow("the suffix is case-sensitive") << u"Notes"_s << QString();
    QTest::newRow("a folder entry that is no application") << u"Readme"_s << QString();
    QTest::newRow("unknown") << u"Nonexistent"_s << QString();
}

void ApplicationsTest::installedApplicationsAreFoundByName()
{
    QFETCH(QString, name);
    ActionBench bench;
    RecordingWorkspace &workspace = bench.desktop.workspace;
    workspace.install(u"Calcbook"_s);
    workspace.install(u"Calculator Pro"_s);
    workspace.install(u"Safari"_s);
    workspace.folders.first().entries.append({u"Notes.APP"_s, {u"/Applications/Notes.APP"_s, u"Notes"_s}});
    workspace.folders.first().entries.append({u"Readme"_s, {u"/Applications/Readme"_s, u"Readme"_s}});
    workspace.install(u"Calculator"_s, u"/System/Applications"_s);
    workspace.install(u"System Settings"_s, u"/System/Applications"_s);
    workspace.install(u"Terminal"_s, u"/System/Applications/Utilities"_s);
    QTEST(location(bench, name), "found");
}

void ApplicationsTest::theEarlierFolderWinsForAnExactName()
{
    ActionBench bench;
    bench.desktop.workspace.install(u"Mail"_s, u"/Applications"_s);
    bench.desktop.workspace.install(u"Mail"_s, u"/System/Applications"_s);
    QCOMPARE(location(bench, u"mail"_s), u"/Applications/Mail.app"_s);
}

void ApplicationsTest::aRunningApplicationWinsOverEveryInstalledOne()
{
    ActionBench bench;
    bench.desktop.workspace.install(u"Visual Studio Code"_s);
    bench.desktop.workspace.start({u"/Developer/Xcode.app"_s, u"Xcode"_s});
    QCOMPARE(location(bench, u"code"_s), u"/Developer/Xcode.app"_s);
}

void ApplicationsTest::aRunningApplicationWithoutABundleIsLookedUpOnDisk()
{
    ActionBench bench;
    bench.desktop.workspace.start(u"Notes"_s);
    bench.desktop.workspace.running.first().bundle.reset();
    QCOMPARE(location(bench, u"Notes"_s), QString());
    bench.desktop.workspace.install(u"Notes"_s, u"/System/Applications"_s);
    QCOMPARE(location(bench, u"Notes"_s), u"/System/Applications/Notes.app"_s);
}

void ApplicationsTest::aRoleNameFindsTheRunningDefault()
{
    ActionBench bench;
    const ApplicationBundle browser{u"/usr/share/applications/files.desktop"_s, u"Files"_s};
    bench.desktop.workspace.roles.insert(u"finder"_s, browser);
    QCOMPARE(runningName(bench, u"Finder"_s), QString());
    QCOMPARE(location(bench, u"Finder"_s), browser.location);
    bench.desktop.workspace.start(browser);
    QCOMPARE(runningName(bench, u"Finder"_s), u"Files"_s);
}

void ApplicationsTest::anExactNameComesBeforeTheRole()
{
    ActionBench bench;
    const ApplicationBundle other{u"/usr/share/applications/files.desktop"_s, u"Files"_s};
    bench.desktop.workspace.roles.insert(u"finder"_s, other);
    const ApplicationBundle finder = bench.desktop.workspace.install(u"Finder"_s);
    QCOMPARE(location(bench, u"Finder"_s), finder.location);
    bench.desktop.workspace.start(other);
    bench.desktop.workspace.start(finder);
    QCOMPARE(runningName(bench, u"Finder"_s), u"Finder"_s);
}

void ApplicationsTest::theRoleComesBeforeAPartialMatch()
{
    ActionBench bench;
    const ApplicationBundle client{u"/usr/share/applications/post.desktop"_s, u"Post"_s};
    bench.desktop.workspace.roles.insert(u"mail"_s, client);
    bench.desktop.workspace.install(u"Mail Merge"_s);
    QCOMPARE(location(bench, u"Mail"_s), client.location);
    bench.desktop.workspace.start(u"Mail Merge"_s);
    bench.desktop.workspace.start(client);
    QCOMPARE(runningName(bench, u"Mail"_s), u"Post"_s);
}

void ApplicationsTest::anAliasIsResolvedBeforeTheRole()
{
    ActionBench bench;
    const ApplicationBundle control{u"/usr/share/applications/control.desktop"_s, u"Control"_s};
    bench.desktop.workspace.roles.insert(u"system settings"_s, control);
    QCOMPARE(location(bench, u"settings"_s), control.location);
}

void ApplicationsTest::allNamesOfAnApplicationAreTriedInOrder_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("found");

    QTest::newRow("in the user's language") << u"Rechner"_s << u"Rechner"_s;
    QTest::newRow("in English") << u"calculator"_s << u"Rechner"_s;
    QTest::newRow("the user's language before English") << u"Notes"_s << u"Notes"_s;
    QTest::newRow("the whole identifier") << u"org.gnome.Calculator"_s << u"Rechner"_s;
    QTest::newRow("the identifier's end") << u"Mousepad"_s << u"Texteditor"_s;
    QTest::newRow("the program") << u"gnome-calculator"_s << u"Rechner"_s;
    QTest::newRow("an exact program before a part of a name") << u"tex"_s << u"Satz"_s;
    QTest::newRow("a part of the English name") << u"text ed"_s << u"Texteditor"_s;
    QTest::newRow("a part in the user's language before one in English") << u"note"_s << u"Notes"_s;
    QTest::newRow("an identifier's first part is not a name") << u"gnome"_s << u"Rechner"_s; // by its program
    QTest::newRow("the beginning of an identifier is not a name") << u"xfce"_s << QString();
}

void ApplicationsTest::allNamesOfAnApplicationAreTriedInOrder()
{
    QFETCH(QString, name);
    ActionBench bench;
    RecordingWorkspace &workspace = bench.desktop.workspace;
    const auto add = [&workspace](const QString &shown, const ApplicationNames &others) {
        workspace.install(shown);
        workspace.folders.first().entries.last().otherNames = others;
    };
    add(u"Notizen"_s, {u"Notes"_s, u"org.gnome.Notes"_s, u"gnotes"_s});
    add(u"Texteditor"_s, {u"Text Editor"_s, u"org.xfce.mousepad"_s, u"mousepad-bin"_s});
    add(u"Rechner"_s, {u"Calculator"_s, u"org.gnome.Calculator"_s, u"gnome-calculator"_s});
    add(u"Notes"_s, {u"Remarks"_s, u"remarks"_s, u"remarks"_s});
    add(u"Satz"_s, {u"Typesetting"_s, u"typesetting"_s, u"tex"_s});
    const auto bundle = Awaited::result(Applications::appURL(name, bench.services()));
    QTEST(bundle ? bundle->displayName : QString(), "found");

    for (const ApplicationFolder::Entry &entry : std::as_const(workspace.folders.first().entries)) {
        workspace.start(entry.bundle);
        workspace.running.last().otherNames = entry.otherNames;
    }
    QTEST(runningName(bench, name), "found");
}

void ApplicationsTest::launchingOpensSettlesAndNamesTheApplication()
{
    ActionBench bench;
    bench.desktop.workspace.install(u"Google Chrome"_s);
    QCOMPARE(bench.outcome(Applications::launch(u"chrome"_s, bench.services())), u"Google Chrome"_s);
    const QStringList expected{u"open application /Applications/Google Chrome.app"_s, u"wait 700 ms"_s};
    QCOMPARE(bench.journal(), expected);
}

void ApplicationsTest::launchingARunningApplicationBringsItForward()
{
    ActionBench bench;
    const RunningApplication chrome = bench.desktop.workspace.start(u"Google Chrome"_s);
    bench.desktop.workspace.makeFrontmost(bench.desktop.workspace.start(u"Notes"_s));
    QCOMPARE(bench.outcome(Applications::launch(u"chrome"_s, bench.services())), u"Google Chrome"_s);
    QCOMPARE(bench.desktop.workspace.frontmostProcess, std::optional(chrome.processIdentifier));
    QCOMPARE(bench.desktop.workspace.running.size(), 2);
}

void ApplicationsTest::launchingAnUnknownApplicationFails()
{
    ActionBench bench;
    QCOMPARE(bench.outcome(Applications::launch(u"Nonexistent"_s, bench.services())),
             u"Error: Couldn't find an app called “Nonexistent”."_s);
    QCOMPARE(bench.journal(), QStringList());
}

void ApplicationsTest::thePlatformsErrorPassesThrough()
{
    ActionBench bench;
    bench.desktop.workspace.install(u"Notes"_s);
    bench.desktop.journal.failures.insert(RecordedOperation::OpenApplication, u"The disk is gone."_s);
    QCOMPARE(bench.outcome(Applications::launch(u"Notes"_s, bench.services())),
             u"Error: The disk is gone."_s);
    QCOMPARE(bench.journal(), QStringList());
}

QTEST_GUILESS_MAIN(ApplicationsTest)
#include "ApplicationsTest.moc"
