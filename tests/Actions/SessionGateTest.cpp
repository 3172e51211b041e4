// SPDX-License-Identifier: Apache-2.0
// What the user's session permits: nothing while the screen is locked, and only work on files while windows,
// keys and screen are inaccessible.
#include "ActionBench.h"
#include "Actions/Operations/Applications.h"
#include "Support/Awaited.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Every action, with everything it needs to succeed on the bench below.
const QStringList replies{
    uR"({"action":"open_app","app":"Notes"})"_s,
    uR"({"action":"focus_app","app":"Notes"})"_s,
    uR"({"action":"quit_app","app":"Notes"})"_s,
    uR"({"action":"open_url","url":"example.org"})"_s,
    uR"({"action":"web_search","query":"weather"})"_s,
    uR"({"action":"new_tab"})"_s,
    uR"({"action":"type_text","text":"a"})"_s,
    uR"({"action":"press_key","key":"return"})"_s,
    uR"({"action":"click","label":"OK"})"_s,
    uR"({"action":"screenshot","save_to":"Downloads"})"_s,
    uR"({"action":"open_path","path":"Downloads"})"_s,
    uR"({"action":"list_windows"})"_s,
    uR"({"action":"read_ui"})"_s,
    uR"({"action":"applescript","script":"beep"})"_s,
};
const QStringList repliesAboutFiles{
    uR"({"action":"create_folder","name":"New","in":"Desktop"})"_s,
    uR"({"action":"find_files","folder":"Downloads"})"_s,
    uR"({"action":"trash","path":"Downloads/a.txt"})"_s,
};

const QString obstacle = u"This desktop is out of reach."_s;

class SessionBench : public ActionBench
{
public:
    SessionBench()
    {
        addFile(u"Downloads/a.txt"_s);
        qputenv("XDG_DATA_HOME", home.path().toUtf8()); // the trash's parent folder
        desktop.workspace.install(u"Notes"_s);
        const RunningApplication notes = desktop.workspace.start(u"Notes"_s);
        desktop.workspace.makeFrontmost(notes);
        desktop.workspace.addWindow(u"Notes"_s, u"Diary"_s);
        RecordedTree tree;
        tree.add(0, {u"AXButton"_s, u"OK"_s});
        desktop.accessibility.trees.insert(notes.processIdentifier, tree);
    }

    bool hasChangedFiles() const
    {
        return !QFileInfo::exists(path(u"Downloads/a.txt"_s)) || QFileInfo::exists(path(u"Desktop"_s));
    }
};

void addRows(const QStringList &all)
{
    QTest::addColumn<QString>("reply");
    for (const QString &reply : all)
        QTest::newRow(qPrintable(reply)) << reply;
}

} // namespace

class SessionGateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLockedScreenRefusesEveryAction_data() { addRows(replies + repliesAboutFiles); }
    void aLockedScreenRefusesEveryAction();
    void anObstacleRefusesActionsThatNeedTheDesktop_data() { addRows(replies); }
    void anObstacleRefusesActionsThatNeedTheDesktop();
    void anObstaclePermitsWorkOnFiles_data() { addRows(repliesAboutFiles); }
    void anObstaclePermitsWorkOnFiles();
    void theFocusDoesNotReturnOnALockedScreen();
    void aLockedScreenIsNotObserved();
};

void SessionGateTest::aLockedScreenRefusesEveryAction()
{
    QFETCH(QString, reply);
    for (const bool answersLater : {false, true}) {
        SessionBench bench;
        bench.desktop.journal.answersLater = answersLater;
        bench.desktop.session.locked = true;
        QCOMPARE(bench.run(reply), u"Error: The screen is locked."_s);
        QCOMPARE(bench.journal(), QStringList());
        QCOMPARE(bench.desktop.accessibility.requests, 0);
        QVERIFY(!bench.hasChangedFiles());

        bench.desktop.session.locked = false;
        const QString line = bench.run(reply);
        QVERIFY2(!line.startsWith(u"Error: "), qPrintable(line));
    }
}

void SessionGateTest::anObstacleRefusesActionsThatNeedTheDesktop()
{
    QFETCH(QString, reply);
    SessionBench bench;
    bench.desktop.session.lastingObstacle = obstacle;
    QCOMPARE(bench.run(reply), u"Error: "_s + obstacle);
    QCOMPARE(bench.journal(), QStringList());
    QCOMPARE(bench.desktop.accessibility.requests, 0);
    QVERIFY(!bench.hasChangedFiles());
}

void SessionGateTest::anObstaclePermitsWorkOnFiles()
{
    QFETCH(QString, reply);
    SessionBench bench;
    bench.desktop.session.lastingObstacle = obstacle;
    const QString line = bench.run(reply);
    QVERIFY2(!line.startsWith(u"Error: "), qPrintable(line));
}

void SessionGateTest::theFocusDoesNotReturnOnALockedScreen()
{
    SessionBench bench;
    bench.desktop.session.locked = true;
    const RunningApplication notes = bench.desktop.workspace.running.first();
    QCOMPARE(bench.outcome(Applications::returnTo(notes, bench.services())),
             u"Error: The screen is locked."_s);
    QCOMPARE(bench.journal(), QStringList());
}

void SessionGateTest::aLockedScreenIsNotObserved()
{
    SessionBench bench;
    const auto observed = [&bench] { return Awaited::result(Executor::observe(bench.services())); };
    QCOMPARE(observed(), u"Frontmost app: Notes. Windows: Notes — Diary"_s);
    bench.desktop.session.locked = true;
    QCOMPARE(observed(), u"Frontmost app: unknown. Windows: none"_s);
}

QTEST_GUILESS_MAIN(SessionGateTest)
#include "SessionGateTest.moc"
