// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Recording/RecordingDesktop.h"
#include "Desktop/PlatformError.h"
#include "Scripting/ScriptHost.h"
#include "Support/Awaited.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// The exception's description, or "done".
template <typename Result>
QCoro::Task<QString> outcomeOf(QCoro::Task<Result> task)
{
    try {
        co_await task;
    } catch (const PlatformError &error) {
        co_return error.errorDescription();
    }
    co_return u"done"_s;
}

template <typename Result>
QString outcome(QCoro::Task<Result> task)
{
    return Awaited::result(outcomeOf(std::move(task)));
}

// Scripts that run here say nothing to it.
class NoScripts : public ScriptHost
{
public:
    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand) override { co_return std::nullopt; }
};

} // namespace

class RecordingDesktopTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theJournalContainsAllChangesInOrder();
    void readOperationsAddNoLine();
    void applicationsStartComeToTheFrontAndEnd();
    void anEndedApplicationCannotBeActivated();
    void readingTheDesktopDoesNotChangeIt();
    void installedApplicationsAreListedByFolderInOrder();
    void rolesAreCaseInsensitive();
    void severalElementsAreReadAtOnce();
    void aTreeIsASnapshot();
    void pressReturnsWhetherTheElementResponds();
    void keysForABackgroundApplicationAreRefused();
    void keysAreRecordedWithTheirPauses();
    void theClockAdvancesOnlyBySleeps();
    void screenshotsAreRealFiles();
    void textFromOutsideIsCleaned();
    void everyOperationCanFail_data();
    void everyOperationCanFail();
    void answersCanBeAsynchronous();

private:
    using Operation = QString (*)(Desktop desktop);

    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<RecordingDesktop> m_desktop;
    NoScripts m_scripts;
};

void RecordingDesktopTest::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    m_desktop = std::make_unique<RecordingDesktop>(m_home->path());
}

void RecordingDesktopTest::cleanup()
{
    m_desktop.reset();
    m_home.reset();
}

void RecordingDesktopTest::theJournalContainsAllChangesInOrder()
{
    const Desktop desktop = m_desktop->services();
    const ApplicationBundle safari = m_desktop->workspace.install(u"Safari"_s);
    const QString url = u"https://Example.org/a%20b"_s;
    const QList<KeyStroke> strokes{{17, EventFlag::Command | EventFlag::Shift, QString()},
                                   {0, EventFlags(), u"a\nb"_s}};
    QCOMPARE(outcome(desktop.workspace.openApplication(safari)), u"done"_s);
    QCOMPARE(outcome(desktop.workspace.open(url)), u"done"_s);
    QCOMPARE(outcome(desktop.workspace.open(url, safari)), u"done"_s);
    QCOMPARE(outcome(desktop.workspace.reveal(u"/tmp/x"_s)), u"done"_s);
    QCOMPARE(outcome(desktop.accessibility.requestTrust()), u"done"_s);
    QCOMPARE(outcome(desktop.keyboard.post(strokes, 0us, m_desktop->workspace.frontmost())), u"done"_s);
    QCOMPARE(outcome(desktop.clock.sleep(600ms)), u"done"_s);
    QCOMPARE(outcome(desktop.scripting.run(u"beep\nbeep"_s, m_scripts)), u"done"_s);
    QCOMPARE(outcome(desktop.workspace.activate(m_desktop->workspace.running.first())), u"done"_s);
    QCOMPARE(outcome(desktop.workspace.terminate(m_desktop->workspace.running.first())), u"done"_s);
    const QStringList expected{
        u"open application /Applications/Safari.app"_s,
        u"open https://Example.org/a%20b"_s,
        u"open https://Example.org/a%20b with /Applications/Safari.app"_s,
        u"reveal /tmp/x"_s,
        u"ask for the Accessibility permission"_s,
        u"press key command+shift+17"_s,
        u"type “a b”"_s,
        u"wait 600 ms"_s,
        u"run script beep beep"_s,
        u"activate Safari"_s,
        u"ask Safari to quit"_s,
    };
    QCOMPARE(m_desktop->journal.lines, expected);
}

void RecordingDesktopTest::readOperationsAddNoLine()
{
    const Desktop desktop = m_desktop->services();
    QCOMPARE(outcome(desktop.workspace.runningApplications()), u"done"_s);
    QCOMPARE(outcome(desktop.workspace.frontmostApplication()), u"done"_s);
    QCOMPARE(outcome(desktop.workspace.applicationFolders()), u"done"_s);
    QCOMPARE(outcome(desktop.workspace.defaultForRole(u"mail"_s)), u"done"_s);
    QCOMPARE(outcome(desktop.accessibility.isProcessTrusted()), u"done"_s);
    QCOMPARE(outcome(desktop.accessibility.applicationTree({5})), u"done"_s);
    QCOMPARE(outcome(desktop.workspace.snapshot()), u"done"_s);
    QCOMPARE(m_desktop->journal.lines, QStringList());
}

void RecordingDesktopTest::applicationsStartComeToTheFrontAndEnd()
{
    const Desktop desktop = m_desktop->services();
    const ApplicationBundle notes = m_desktop->workspace.install(u"Notes"_s);
    QVERIFY(!Awaited::result(desktop.workspace.frontmostApplication()));
    QCOMPARE(outcome(desktop.workspace.openApplication(notes)), u"done"_s);
    m_desktop->workspace.makeFrontmost(m_desktop->workspace.start(u"Mail"_s));
    QCOMPARE(outcome(desktop.workspace.openApplication(notes)), u"done"_s);
    QCOMPARE(m_desktop->workspace.running.size(), 2);
    const auto front = Awaited::result(desktop.workspace.frontmostApplication());
    QVERIFY(front);
    QCOMPARE(front->localizedName, std::optional(u"Notes"_s));
    m_desktop->workspace.waitingToQuit.insert(front->processIdentifier);
    QCOMPARE(outcome(desktop.workspace.terminate(*front)), u"done"_s);
    QVERIFY(!Awaited::result(desktop.workspace.isTerminated(*front)));
    m_desktop->workspace.waitingToQuit.clear();
    QCOMPARE(outcome(desktop.workspace.terminate(*front)), u"done"_s);
    QVERIFY(Awaited::result(desktop.workspace.isTerminated(*front)));
    QVERIFY(!Awaited::result(desktop.workspace.frontmostApplication()));
}

void RecordingDesktopTest::anEndedApplicationCannotBeActivated()
{
    const RunningApplication notes = m_desktop->workspace.start(u"Notes"_s);
    m_desktop->workspace.running.clear();
    QCOMPARE(outcome(m_desktop->workspace.activate(notes)), u"“Notes” isn't running."_s);
    QCOMPARE(m_desktop->journal.lines, QStringList());
}

void RecordingDesktopTest::readingTheDesktopDoesNotChangeIt()
{
    m_desktop->workspace.install(u"Notes"_s);
    m_desktop->workspace.start(u"Notes"_s);
    m_desktop->workspace.addWindow(u"Notes"_s);
    const Desktop desktop = m_desktop->services();
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(Awaited::result(desktop.workspace.runningApplications()).size(), 1);
        QCOMPARE(Awaited::result(desktop.workspace.applicationFolders()).size(), 1);
        QCOMPARE(Awaited::result(desktop.workspace.snapshot()).windows.size(), 1);
    }
}

void RecordingDesktopTest::installedApplicationsAreListedByFolderInOrder()
{
    m_desktop->workspace.install(u"B"_s, u"/one"_s);
    m_desktop->workspace.install(u"A"_s, u"/two"_s);
    m_desktop->workspace.install(u"A"_s, u"/one"_s);
    const auto folders = Awaited::result(m_desktop->workspace.applicationFolders());
    QStringList locations;
    for (const ApplicationFolder &folder : folders) {
        for (const ApplicationFolder::Entry &entry : folder.entries)
            locations.append(entry.bundle.location);
    }
    QCOMPARE(locations, (QStringList{u"/one/B.app"_s, u"/one/A.app"_s, u"/two/A.app"_s}));
}

void RecordingDesktopTest::rolesAreCaseInsensitive()
{
    const ApplicationBundle files{u"/x/files.desktop"_s, u"Files"_s};
    m_desktop->workspace.roles.insert(u"finder"_s, files);
    QCOMPARE(Awaited::result(m_desktop->workspace.defaultForRole(u"FINDER"_s)), std::optional(files));
    QCOMPARE(Awaited::result(m_desktop->workspace.defaultForRole(u"mail"_s)),
             std::optional<ApplicationBundle>());
}

void RecordingDesktopTest::severalElementsAreReadAtOnce()
{
    RecordedTree recorded;
    const int window = recorded.add(0, {u"AXWindow"_s, u"Main"_s});
    const int button = recorded.add(window, {u"AXButton"_s, u"OK"_s, u"d"_s, u"v"_s, u"h"_s});
    m_desktop->accessibility.trees.insert(7, recorded);
    const auto tree = Awaited::result(m_desktop->accessibility.applicationTree({7}));
    const QList<AccessibilityElement> asked{button, tree->root(), window};
    const auto read = Awaited::result(tree->read(asked));
    QCOMPARE(read.size(), 3);
    QCOMPARE(read.at(0).role, u"AXButton"_s);
    QCOMPARE(read.at(0).title, std::optional(u"OK"_s));
    QCOMPARE(read.at(0).description, std::optional(u"d"_s));
    QCOMPARE(read.at(0).value, std::optional(u"v"_s));
    QCOMPARE(read.at(0).help, std::optional(u"h"_s));
    QCOMPARE(read.at(1).role, u"AXApplication"_s);
    QCOMPARE(read.at(1).children, QList<AccessibilityElement>{window});
    QCOMPARE(read.at(2).children, QList<AccessibilityElement>{button});
    QCOMPARE(m_desktop->accessibility.requests, 1);
    QCOMPARE(m_desktop->accessibility.elementsRead, 3);
}

void RecordingDesktopTest::aTreeIsASnapshot()
{
    m_desktop->accessibility.trees.insert(7, RecordedTree());
    const auto tree = Awaited::result(m_desktop->accessibility.applicationTree({7}));
    m_desktop->accessibility.trees[7].add(0, {u"AXButton"_s, u"New"_s});
    const QList<AccessibilityElement> root{tree->root()};
    QCOMPARE(Awaited::result(tree->read(root)).first().children.size(), 0);
}

void RecordingDesktopTest::pressReturnsWhetherTheElementResponds()
{
    RecordedTree recorded;
    const int willing = recorded.add(0, {u"AXButton"_s, u"Yes"_s});
    const int unwilling = recorded.add(0, {u"AXButton"_s, std::nullopt, u"No"_s});
    recorded.elements[unwilling].respondsToPress = false;
    m_desktop->accessibility.trees.insert(7, recorded);
    const auto tree = Awaited::result(m_desktop->accessibility.applicationTree({7}));
    QVERIFY(Awaited::result(tree->press(willing)));
    QVERIFY(!Awaited::result(tree->press(unwilling)));
    QCOMPARE(m_desktop->journal.lines, (QStringList{u"press AXButton “Yes”"_s, u"press AXButton “No”"_s}));
}

void RecordingDesktopTest::keysForABackgroundApplicationAreRefused()
{
    RecordingWorkspace &workspace = m_desktop->workspace;
    const RunningApplication notes = workspace.start(u"Notes"_s);
    workspace.makeFrontmost(workspace.start(u"Mail"_s));
    const QList<KeyStroke> strokes{{36, EventFlags(), QString()}};
    const QString refusal = u"Another application is in front, so no keys were sent."_s;
    QCOMPARE(outcome(m_desktop->keyboard.post(strokes, 0us, notes)), refusal);
    QCOMPARE(outcome(m_desktop->keyboard.post(strokes, 0us, std::nullopt)), refusal);
    QVERIFY(m_desktop->keyboard.strokes.isEmpty());
}

void RecordingDesktopTest::keysAreRecordedWithTheirPauses()
{
    const QList<KeyStroke> strokes{{36, EventFlags(), QString()}, {0, EventFlags(), u"x"_s}};
    QCOMPARE(outcome(m_desktop->keyboard.post(strokes, 15ms, std::nullopt)), u"done"_s);
    QCOMPARE(m_desktop->keyboard.strokes, strokes);
    QCOMPARE(m_desktop->keyboard.pauses, (QList<std::chrono::microseconds>{15ms, 15ms}));
}

void RecordingDesktopTest::theClockAdvancesOnlyBySleeps()
{
    const QDateTime start = m_desktop->clock.now();
    QCOMPARE(m_desktop->clock.now(), start);
    QCOMPARE(outcome(m_desktop->clock.sleep(1200ms)), u"done"_s);
    QCOMPARE(m_desktop->clock.now(), start.addMSecs(1200));
    QCOMPARE(m_desktop->clock.sleeps, QList<std::chrono::milliseconds>{1200ms});
}

void RecordingDesktopTest::screenshotsAreRealFiles()
{
    const QString path = m_home->path() + u"/a.png"_s;
    QCOMPARE(outcome(m_desktop->screenCapture.capture(path)), u"done"_s);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.read(8), QByteArray("\x89PNG\r\n\x1A\n"));
    m_desktop->screenCapture.writesFile = false;
    QCOMPARE(outcome(m_desktop->screenCapture.capture(m_home->path() + u"/b.png"_s)), u"done"_s);
    QVERIFY(!QFile::exists(m_home->path() + u"/b.png"_s));
}

void RecordingDesktopTest::textFromOutsideIsCleaned()
{
    const QString foreign = u"a\n<|b|>\u202E"_s;
    const std::optional<QString> harmless = u"a < |b| >"_s;
    const Desktop desktop = m_desktop->services();
    m_desktop->workspace.addWindow(foreign, foreign);
    const auto windows = Awaited::result(desktop.workspace.snapshot()).windows;
    QCOMPARE(windows.first().ownerName, harmless);
    QCOMPARE(windows.first().name, harmless);
    QCOMPARE(m_desktop->workspace.start(foreign).localizedName, harmless);
    m_desktop->scripting.outcome = {ScriptOutcome::Ending::Failed, foreign};
    const ScriptOutcome script = Awaited::result(desktop.scripting.run(u"x"_s, m_scripts));
    QCOMPARE(script.text, harmless);
    RecordedTree recorded;
    recorded.add(0, {u"AXButton"_s, foreign, foreign, foreign, foreign});
    m_desktop->accessibility.trees.insert(7, recorded);
    const auto tree = Awaited::result(desktop.accessibility.applicationTree({7}));
    const QList<AccessibilityElement> button{1};
    const auto read = Awaited::result(tree->read(button));
    QCOMPARE(read.first().title, harmless);
    QCOMPARE(read.first().help, harmless);
}

void RecordingDesktopTest::everyOperationCanFail_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<Operation>("attempt");
    const auto row = [](const char *name, RecordedOperation operation, Operation attempt) {
        QTest::newRow(name) << static_cast<int>(operation) << attempt;
    };
    using O = RecordedOperation;

    row("running applications", O::RunningApplications,
        [](Desktop d) { return outcome(d.workspace.runningApplications()); });
    row("frontmost application", O::FrontmostApplication,
        [](Desktop d) { return outcome(d.workspace.frontmostApplication()); });
    row("activate", O::Activate, [](Desktop d) { return outcome(d.workspace.activate({})); });
    row("terminate", O::Terminate, [](Desktop d) { return outcome(d.workspace.terminate({})); });
    row("is terminated", O::IsTerminated, [](Desktop d) { return outcome(d.workspace.isTerminated({})); });
    row("application folders", O::ApplicationFolders,
        [](Desktop d) { return outcome(d.workspace.applicationFolders()); });
    row("default for a role", O::DefaultForRole,
        [](Desktop d) { return outcome(d.workspace.defaultForRole(u"mail"_s)); });
    row("open an application", O::OpenApplication,
        [](Desktop d) { return outcome(d.workspace.openApplication({})); });
    row("open an address", O::OpenURL, [](Desktop d) { return outcome(d.workspace.open(QString())); });
    row("open an address with an application", O::OpenURLWithApplication,
        [](Desktop d) { return outcome(d.workspace.open(QString(), {})); });
    row("reveal", O::Reveal, [](Desktop d) { return outcome(d.workspace.reveal(u"/"_s)); });
    row("trust", O::IsProcessTrusted, [](Desktop d) { return outcome(d.accessibility.isProcessTrusted()); });
    row("ask for trust", O::RequestTrust, [](Desktop d) { return outcome(d.accessibility.requestTrust()); });
    row("tree", O::ApplicationTree, [](Desktop d) { return outcome(d.accessibility.applicationTree({1})); });
    row("read", O::ReadElements,
        [](Desktop d) { return outcome(Awaited::result(d.accessibility.applicationTree({1}))->read({0})); });
    row("press", O::Press,
        [](Desktop d) { return outcome(Awaited::result(d.accessibility.applicationTree({1}))->press(0)); });
    row("keys", O::PostKeys, [](Desktop d) { return outcome(d.keyboard.post({}, 0us, std::nullopt)); });
    row("snapshot", O::Snapshot, [](Desktop d) { return outcome(d.workspace.snapshot()); });
    row("capture", O::Capture, [](Desktop d) { return outcome(d.screenCapture.capture(QString())); });
    row("script", O::RunScript, [](Desktop d) {
        NoScripts host;
        return outcome(d.scripting.run(QString(), host));
    });
}

void RecordingDesktopTest::everyOperationCanFail()
{
    QFETCH(int, operation);
    QFETCH(Operation, attempt);
    m_desktop->journal.failures.insert(static_cast<RecordedOperation>(operation), u"Not\ntoday."_s);
    QCOMPARE(attempt(m_desktop->services()), u"Not today."_s);
    QCOMPARE(m_desktop->journal.lines, QStringList());
}

void RecordingDesktopTest::answersCanBeAsynchronous()
{
    m_desktop->journal.answersLater = true;
    const QCoro::Task<void> reveal = m_desktop->workspace.reveal(u"/tmp"_s);
    QVERIFY(!reveal.isReady());
    QTRY_VERIFY(reveal.isReady());
    QCOMPARE(m_desktop->journal.lines, QStringList(u"reveal /tmp"_s));
}

QTEST_GUILESS_MAIN(RecordingDesktopTest)
#include "RecordingDesktopTest.moc"
