// SPDX-License-Identifier: Apache-2.0
// An action affects exactly the target that was judged, even if applications start, end or come to the front
// in between.
#include "Actions/ActionTarget.h"
#include "ActionBench.h"
#include "Support/Awaited.h"

#include <QTest>

using namespace Qt::StringLiterals;

class ActionTargetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRoleNameIsResolvedToTheRunningApplication();
    void theJudgedApplicationIsQuit();
    void anApplicationThatHasEndedIsNotReplaced();
    void keysAreRefusedIfAnotherApplicationIsInFront_data();
    void keysAreRefusedIfAnotherApplicationIsInFront();
    void theJudgedControlIsPressed();
    void anApprovedControlIsSearchedAgain();
    void aDifferentControlIsNotPressed();
    void aControlThatAppearsDuringTheApprovalIsPressed();
    void findingATargetChangesNothing_data();
    void findingATargetChangesNothing();
    void theActionReportsAFailedSearch_data();
    void theActionReportsAFailedSearch();

private:
    static AgentAction action(const QString &reply) { return AgentAction::parse(reply).value(); }

    static ActionTarget target(ActionBench &bench, const AgentAction &action)
    {
        return Awaited::result(ActionTarget::find(action, bench.services()));
    }

    static QString run(ActionBench &bench, const AgentAction &action, const ActionTarget &target)
    {
        return bench.outcome(Executor::run(action, target, bench.services()));
    }

    // Like the agent loop after an approval.
    static QCoro::Task<QString> approved(AgentAction action, ActionTarget judged, Desktop desktop)
    {
        const ActionTarget now = co_await ActionTarget::findApproved(action, judged, desktop);
        const QString line = co_await Executor::run(action, now, desktop);
        co_return line;
    }

    // The frontmost application, with one button.
    static RunningApplication shop(ActionBench &bench, const QString &button)
    {
        const RunningApplication application = bench.desktop.workspace.start(u"Shop"_s);
        bench.desktop.workspace.makeFrontmost(application);
        setButton(bench, application, button);
        return application;
    }

    static void setButton(ActionBench &bench, const RunningApplication &application, const QString &label)
    {
        RecordedTree tree;
        tree.add(0, {u"AXButton"_s, label});
        bench.desktop.accessibility.trees.insert(application.processIdentifier, tree);
    }
};

void ActionTargetTest::aRoleNameIsResolvedToTheRunningApplication()
{
    ActionBench bench;
    const ApplicationBundle browser{u"/usr/share/applications/firefox.desktop"_s, u"Firefox ESR"_s};
    bench.desktop.workspace.roles.insert(u"preview"_s, browser);
    const RunningApplication running = bench.desktop.workspace.start(browser);
    const ActionTarget found = target(bench, action(uR"({"action":"quit_app","app":"Preview"})"_s));
    QCOMPARE(found.quitting->processIdentifier, running.processIdentifier);
    QVERIFY(!found.frontmost && !found.control && !found.failure);
}

void ActionTargetTest::theJudgedApplicationIsQuit()
{
    ActionBench bench;
    const ApplicationBundle player{u"/usr/share/applications/player.desktop"_s, u"Player"_s};
    bench.desktop.workspace.roles.insert(u"music"_s, player);
    bench.desktop.workspace.start(player);
    const AgentAction quit = action(uR"({"action":"quit_app","app":"Music"})"_s);
    const ActionTarget judged = target(bench, quit);
    bench.desktop.workspace.start(u"Music"_s); // would now be found first
    QCOMPARE(run(bench, quit, judged), u"Music quit."_s);
    QCOMPARE(bench.journal().constFirst(), u"ask Player to quit"_s);
}

void ActionTargetTest::anApplicationThatHasEndedIsNotReplaced()
{
    ActionBench bench;
    bench.desktop.workspace.start(u"Music"_s);
    const AgentAction quit = action(uR"({"action":"quit_app","app":"Music"})"_s);
    const ActionTarget judged = target(bench, quit);
    bench.desktop.workspace.running.clear();
    bench.desktop.workspace.start(u"Music Studio"_s);
    QCOMPARE(run(bench, quit, judged), u"Music is not running."_s);
    QCOMPARE(bench.journal(), QStringList());
}

void ActionTargetTest::keysAreRefusedIfAnotherApplicationIsInFront_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<bool>("wasAnyoneInFront");
    for (const bool wasAnyoneInFront : {true, false}) {
        const char *when = wasAnyoneInFront ? "" : ", nobody was in front";
        QTest::addRow("press_key%s", when)
            << uR"({"action":"press_key","key":"return"})"_s << wasAnyoneInFront;
        QTest::addRow("type_text%s", when) << uR"({"action":"type_text","text":"hi"})"_s << wasAnyoneInFront;
        QTest::addRow("new_tab%s", when) << uR"({"action":"new_tab"})"_s << wasAnyoneInFront;
    }
}

void ActionTargetTest::keysAreRefusedIfAnotherApplicationIsInFront()
{
    QFETCH(QString, reply);
    QFETCH(bool, wasAnyoneInFront);
    ActionBench bench;
    RecordingWorkspace &workspace = bench.desktop.workspace;
    if (wasAnyoneInFront)
        workspace.makeFrontmost(workspace.start(u"Notes"_s));
    const ActionTarget judged = target(bench, action(reply));
    workspace.makeFrontmost(workspace.start(u"Messages"_s));
    const QString outcome = run(bench, action(reply), judged);
    QVERIFY2(outcome.startsWith(u"Error: "_s), qPrintable(outcome));
    QVERIFY(bench.desktop.keyboard.strokes.isEmpty());
}

void ActionTargetTest::theJudgedControlIsPressed()
{
    ActionBench bench;
    const RunningApplication application = shop(bench, u"Continue"_s);
    const AgentAction click = action(uR"({"action":"click","label":"con"})"_s);
    const ActionTarget judged = target(bench, click);
    QCOMPARE(judged.control->label, u"Continue"_s);
    setButton(bench, application, u"Confirm order"_s);
    QCOMPARE(run(bench, click, judged), u"Clicked “con”."_s);
    QCOMPARE(bench.journal(), QStringList(u"press AXButton “Continue”"_s));
}

void ActionTargetTest::anApprovedControlIsSearchedAgain()
{
    ActionBench bench;
    shop(bench, u"Confirm order"_s);
    const AgentAction click = action(uR"({"action":"click","label":"conf"})"_s);
    const ActionTarget judged = target(bench, click);
    bench.desktop.workspace.makeFrontmost(bench.desktop.workspace.start(u"Terminal"_s));
    QCOMPARE(bench.outcome(approved(click, judged, bench.services())), u"Clicked “conf”."_s);
    QCOMPARE(bench.journal(), (QStringList{u"activate Shop"_s, u"press AXButton “Confirm order”"_s}));
}

void ActionTargetTest::aDifferentControlIsNotPressed()
{
    ActionBench bench;
    const RunningApplication application = shop(bench, u"Delete draft"_s);
    const AgentAction click = action(uR"({"action":"click","label":"Delete"})"_s);
    const ActionTarget judged = target(bench, click);
    setButton(bench, application, u"Delete account"_s);
    QCOMPARE(bench.outcome(approved(click, judged, bench.services())),
             u"Error: “Delete” is another control now, so nothing was pressed."_s);
    QCOMPARE(bench.journal(), QStringList(u"activate Shop"_s));
}

void ActionTargetTest::aControlThatAppearsDuringTheApprovalIsPressed()
{
    ActionBench bench;
    const RunningApplication application = shop(bench, u"Wait"_s);
    const AgentAction click = action(uR"({"action":"click","label":"Send"})"_s);
    const ActionTarget judged = target(bench, click);
    QVERIFY(!judged.control);
    setButton(bench, application, u"Send"_s);
    QCOMPARE(bench.outcome(approved(click, judged, bench.services())), u"Clicked “Send”."_s);
}

void ActionTargetTest::findingATargetChangesNothing_data()
{
    QTest::addColumn<QString>("reply");
    for (const char *reply :
         {R"({"action":"click","label":"OK"})", R"({"action":"quit_app","app":"Shop"})",
          R"({"action":"press_key","key":"q"})", R"({"action":"trash","path":"a"})", R"({"action":"click"})"})
        QTest::newRow(reply) << QString::fromLatin1(reply);
}

void ActionTargetTest::findingATargetChangesNothing()
{
    QFETCH(QString, reply);
    ActionBench bench;
    shop(bench, u"OK"_s);
    bench.desktop.accessibility.trusted = false;
    QVERIFY(!target(bench, action(reply)).control);
    QCOMPARE(bench.journal(), QStringList());
    QCOMPARE(bench.desktop.accessibility.prompts, 0);
}

void ActionTargetTest::theActionReportsAFailedSearch_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<int>("operation");
    const auto row = [](const char *reply, RecordedOperation operation) {
        QTest::newRow(reply) << QString::fromLatin1(reply) << static_cast<int>(operation);
    };
    row(R"({"action":"quit_app","app":"Music"})", RecordedOperation::RunningApplications);
    row(R"({"action":"press_key","key":"return"})", RecordedOperation::FrontmostApplication);
    row(R"({"action":"type_text","text":"a"})", RecordedOperation::FrontmostApplication);
    row(R"({"action":"new_tab"})", RecordedOperation::FrontmostApplication);
    row(R"({"action":"click","label":"OK"})", RecordedOperation::ApplicationTree);
}

void ActionTargetTest::theActionReportsAFailedSearch()
{
    QFETCH(QString, reply);
    QFETCH(int, operation);
    ActionBench bench;
    shop(bench, u"OK"_s);
    bench.desktop.workspace.start(u"Music"_s);
    bench.desktop.journal.failures.insert(static_cast<RecordedOperation>(operation), u"It hangs."_s);
    const ActionTarget judged = target(bench, action(reply));
    bench.desktop.journal.failures.clear();
    QCOMPARE(run(bench, action(reply), judged), u"Error: It hangs."_s);
    QCOMPARE(bench.journal(), QStringList());
}

QTEST_GUILESS_MAIN(ActionTargetTest)
#include "ActionTargetTest.moc"
