// SPDX-License-Identifier: Apache-2.0
#include "Agent/SessionBench.h"
#include "Support/Gate.h"

#include <QTest>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

// When an injected fault occurs, and what is thrown.
enum class Moment { FirstObservation, BeforeTheStep, InTheStep, LastObservation };
enum class Thrown { Exception, Number };

// Makes the bench's desktop fail at a given moment of a one-step task.
class FaultyDesktop
{
public:
    FaultyDesktop(SessionBench &bench, Moment moment, Thrown thrown)
        : m_bench(bench), m_moment(moment), m_thrown(thrown)
    {
    }

    Desktop services()
    {
        const Desktop all = m_bench.desktop.services();
        return {all.session,   m_workspace, all.accessibility, m_keyboard, all.screenCapture,
                all.scripting, all.files,   all.dialogs,       all.clock};
    }

    void mend() { m_isMended = true; }

private:
    struct FaultyWorkspace : RecordingWorkspace
    {
        explicit FaultyWorkspace(FaultyDesktop &owner)
            : RecordingWorkspace(owner.m_bench.desktop.journal), desktop(owner)
        {
        }

        QCoro::Task<std::optional<RunningApplication>> frontmostApplication() override
        {
            desktop.reach(desktop.momentOfALook());
            return RecordingWorkspace::frontmostApplication();
        }

        QCoro::Task<WorkspaceSnapshot> snapshot() override
        {
            desktop.reach(desktop.momentOfALook());
            return RecordingWorkspace::snapshot();
        }

        FaultyDesktop &desktop;
    };

    struct FaultyKeyboard : RecordingKeyboard
    {
        explicit FaultyKeyboard(FaultyDesktop &owner)
            : RecordingKeyboard(owner.m_bench.desktop.journal, owner.m_workspace), desktop(owner)
        {
        }

        QCoro::Task<void> post(QList<KeyStroke> newStrokes, std::chrono::microseconds pause,
                               std::optional<RunningApplication> receiver) override
        {
            desktop.reach(Moment::InTheStep);
            return RecordingKeyboard::post(newStrokes, pause, receiver);
        }

        FaultyDesktop &desktop;
    };

    Moment momentOfALook() const
    {
        if (m_bench.engine->conversations.isEmpty())
            return Moment::FirstObservation;
        return m_keyboard.strokes.isEmpty() ? Moment::BeforeTheStep : Moment::LastObservation;
    }

    void reach(Moment moment) const
    {
        if (m_isMended || moment != m_moment)
            return;
        if (m_thrown == Thrown::Number)
            throw 42;
        throw std::runtime_error("The disk\nis on fire.");
    }

    SessionBench &m_bench;
    const Moment m_moment;
    const Thrown m_thrown;
    bool m_isMended = false;
    FaultyWorkspace m_workspace{*this};
    FaultyKeyboard m_keyboard{*this};
};

} // namespace

// Whole runs, each compared as one text: messages to the model, questions and status, the log, and operations
// on the desktop.
class AgentLoopTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTaskRunsStepByStepUntilTheModelIsDone();
    void aTaskIsDoneWithoutAnyStep();
    void doneWithoutAMessageSaysDone_data();
    void doneWithoutAMessageSaysDone();

    void aModelThatIsBeingLoadedIsWaitedFor();
    void aModelThatCannotBeLoadedEndsTheRun();
    void aMissingModelEndsTheRun();
    void anErrorOfTheEngineEndsTheRun();
    void anUnforeseenErrorEndsTheRunWithASentence();
    void anUnforeseenErrorAnywhereEndsTheRun_data();
    void anUnforeseenErrorAnywhereEndsTheRun();

    void theFirstTaskSwitchesAccessibilityOn();
    void aDesktopWithoutAccessibilityIsLeftToTheSteps();
    void aPermissionOfTheUserIsNotAskedForBeforeItIsNeeded();

    void anErrorOfAStepIsFedBackAndTheRunGoesOn();
    void anUnknownActionIsFedBack();

    void threeInvalidRepliesEndTheRun();
    void validRepliesBetweenDoNotForgiveInvalidOnes();
    void anInvalidReplyIsKeptAsItCame();

    void theSameStepTwiceStopsTheRun();
    void theSameStepWithItsKeysInAnotherOrderStopsTheRun();
    void anotherStepBetweenMakesARepeatAllowed();
    void anInvalidReplyBetweenDoesNotMakeARepeatAllowed();

    void twelveStepsAreTheMost();
    void anInvalidTwelfthReplyEndsWithTheStepLimit();
    void aThirdInvalidReplyThatIsTheTwelfthEndsWithoutAPlan();
    void doneAsTheTwelfthReplyIsStillDone();

    void aDeclinedStepIsNotCarriedOut();
    void anApprovedStepIsCarriedOut();
    void anApprovalFromAnotherWindowGivesTheFocusBackFirst();
    void anApprovalForAnApplicationThatHasGoneFails();
    void anApprovalOfAStepWithoutFocusLeavesTheFocus();
    void anApplicationUnderAHarmlessNameIsQuitOnlyWhenApproved();
    void aControlIsPressedOnlyWhenItsOwnLabelIsHarmlessOrApproved();
    void stoppedWhileTheTargetIsLookedForIsARefusal();

    void cancelledBeforeTheFirstReply();
    void cancelledWhileTheModelWrites();
    void cancelledWhileAStepIsCarriedOut();
    void stoppedWhileWaitingForApprovalIsARefusal();
};

namespace {

const QString nothingOpen = u"Frontmost app: unknown. Windows: none"_s;

QString pressReturn()
{
    return uR"({"action":"press_key","key":"return"})"_s;
}

// `count` different steps.
QStringList distinctSteps(int count)
{
    QStringList steps;
    for (int i = 1; i <= count; ++i)
        steps.append(typeText(QString::number(i)));
    return steps;
}

void script(SessionBench &bench, const QStringList &replies)
{
    for (const QString &reply : replies)
        bench.engine->replies.append(reply);
}

// The log of `count` successful steps.
QStringList doneSteps(int count)
{
    QStringList lines;
    for (int i = 1; i <= count; ++i)
        lines.append(u"step: Typing “%1”"_s.arg(i));
    return lines;
}

} // namespace

void AgentLoopTest::aTaskRunsStepByStepUntilTheModelIsDone()
{
    SessionBench bench;
    bench.desktop.workspace.install(u"Safari"_s);
    script(bench, {u"  "_s + openApp(u"Safari"_s) + u"\n"_s, typeText(u"hello"_s), done(u"Typed hello."_s)});
    bench.runTask(u"  Open Safari and type hello\n"_s);
    QCOMPARE(bench.transcript(), uR"(== conversation
system: (the system prompt)
user: User: Open Safari and type hello
State: Frontmost app: unknown. Windows: none
assistant: {"action":"open_app","app":"Safari"}
user: Result: Safari is now frontmost.
State: Frontmost app: Safari. Windows: none
assistant: {"action":"type_text","text":"hello"}
user: Result: Typed text.
State: Frontmost app: Safari. Windows: none
== asked
(none)
== status
Thinking…
Launching Safari
Thinking…
Typing “hello”
Thinking…
(idle)
== log
step: Launching Safari
step: Typing “hello”
success: Typed hello.
== summary
Typed hello.
== desktop
open application /Applications/Safari.app
wait 700 ms
type “hello”
)"_s);
    QCOMPARE(bench.engine->tokenLimits, QList<int>({200, 200, 200}));
}

void AgentLoopTest::aTaskIsDoneWithoutAnyStep()
{
    SessionBench bench;
    script(bench, {done(u"Nothing to do."_s)});
    bench.runTask(u"Do nothing"_s);
    QCOMPARE(bench.transcript(), uR"(== conversation
system: (the system prompt)
user: User: Do nothing
State: Frontmost app: unknown. Windows: none
== asked
(none)
== status
Thinking…
(idle)
== log
success: Nothing to do.
== summary
Nothing to do.
== desktop
(none)
)"_s);
}

void AgentLoopTest::doneWithoutAMessageSaysDone_data()
{
    QTest::addColumn<QString>("reply");
    QTest::newRow("no message") << uR"({"action":"done"})"_s;
    QTest::newRow("blank message") << uR"({"action":"done","message":"  "})"_s;
    QTest::newRow("message that is no text") << uR"({"action":"done","message":null})"_s;
    QTest::newRow("upper case") << uR"({"action":"DONE"})"_s;
}

void AgentLoopTest::doneWithoutAMessageSaysDone()
{
    QFETCH(QString, reply);
    SessionBench bench;
    script(bench, {reply});
    bench.runTask(u"Do nothing"_s);
    QCOMPARE(bench.described(bench.lastTurn().log), u"success: Done"_s);
    QCOMPARE(bench.lastTurn().summary, u"Done"_s);
}

void AgentLoopTest::aModelThatIsBeingLoadedIsWaitedFor()
{
    SessionBench bench;
    Gate gate;
    bench.engine->beforeLoaded = [&gate] { return gate.passed(); };
    bench.engine->replies = {u"{\"action\":\"done\",\"message\":\"Hello\"}"_s};
    const QCoro::Task<void> loading = bench.models.loadIfNeeded(); // as when the window appears
    bench.session->submit(u"Say hello"_s);
    QCoreApplication::processEvents();
    QVERIFY(bench.session->isRunning());
    gate.open();
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.session->turns()[0].log.constLast().text, u"Hello"_s);
}

void AgentLoopTest::aModelThatCannotBeLoadedEndsTheRun()
{
    SessionBench bench;
    bench.engine->loadError = InferenceError(InferenceError::Code::LoadFailed);
    bench.runTask(u"Open Safari"_s);
    QCOMPARE(bench.transcript(), uR"(== conversation
(none)
== asked
(none)
== status
(none)
== log
failure: The local model isn't ready yet.
== summary
(none)
== desktop
(none)
)"_s);
    QVERIFY(bench.lastTurn().finished);
}

void AgentLoopTest::aMissingModelEndsTheRun()
{
    SessionBench bench(SessionBench::ModelFile::Missing);
    bench.runTask(u"Open Safari"_s);
    QVERIFY(bench.engine->conversations.isEmpty());
    QCOMPARE(bench.described(bench.lastTurn().log), u"failure: The local model isn't ready yet."_s);
    QVERIFY(!bench.lastTurn().summary);
}

void AgentLoopTest::anErrorOfTheEngineEndsTheRun()
{
    SessionBench bench;
    script(bench, {typeText(u"1"_s)});
    bench.engine->replies.append(InferenceError(InferenceError::Code::DecodeFailed));
    bench.runTask(u"Type 1"_s);
    QCOMPARE(bench.transcript(), uR"(== conversation
system: (the system prompt)
user: User: Type 1
State: Frontmost app: unknown. Windows: none
assistant: {"action":"type_text","text":"1"}
user: Result: Typed text.
State: Frontmost app: unknown. Windows: none
== asked
(none)
== status
Thinking…
Typing “1”
Thinking…
(idle)
== log
step: Typing “1”
failure: The model failed while generating.
== summary
(none)
== desktop
type “1”
)"_s);
}

void AgentLoopTest::anUnforeseenErrorEndsTheRunWithASentence()
{
    SessionBench bench;
    script(bench, {done(u"Never heard."_s)});
    bench.engine->beforeReply = []() -> QCoro::Task<void> {
        throw std::runtime_error("out of range");
        co_return;
    };
    bench.runTask(u"Type 1"_s);
    QCOMPARE(bench.described(bench.lastTurn().log), u"failure: out of range"_s);
    QVERIFY(!bench.lastTurn().summary);
}

void AgentLoopTest::anUnforeseenErrorAnywhereEndsTheRun_data()
{
    QTest::addColumn<Moment>("moment");
    QTest::addColumn<Thrown>("thrown");
    QTest::addColumn<QString>("log");
    const auto rows = [](const char *when, Moment moment, const QString &before) {
        QTest::addRow("%s", when) << moment << Thrown::Exception
                                  << before + u"failure: The disk is on fire."_s;
        QTest::addRow("%s, no exception", when)
            << moment << Thrown::Number << before + u"failure: Something unexpected went wrong."_s;
    };
    rows("at the first look at the screen", Moment::FirstObservation, {});
    rows("before the step", Moment::BeforeTheStep, u"failure: Typing “1”\n"_s);
    rows("in the step", Moment::InTheStep, u"failure: Typing “1”\n"_s);
    rows("at the look behind the step", Moment::LastObservation, u"step: Typing “1”\n"_s);
}

void AgentLoopTest::anUnforeseenErrorAnywhereEndsTheRun()
{
    QFETCH(Moment, moment);
    QFETCH(Thrown, thrown);
    SessionBench bench;
    FaultyDesktop faulty(bench, moment, thrown);
    bench.session = std::make_unique<AgentSession>(bench.models, faulty.services());
    script(bench, {typeText(u"1"_s), done(u"Never said."_s)});
    bench.runTask(u"Type 1"_s);
    QTEST(bench.described(bench.lastTurn().log), "log");
    QVERIFY(bench.lastTurn().finished);
    QVERIFY(!bench.lastTurn().summary);
    QVERIFY(!bench.session->pending());
    QVERIFY(bench.session->status().isEmpty());

    // The session remains usable.
    faulty.mend();
    bench.engine->replies = {done(u"Second."_s)};
    bench.runTask(u"Second"_s);
    QCOMPARE(bench.lastTurn().summary, u"Second."_s);
}

void AgentLoopTest::theFirstTaskSwitchesAccessibilityOn()
{
    SessionBench bench;
    bench.desktop.journal.answersLater = true;
    bench.desktop.accessibility.trusted = false;
    bench.desktop.accessibility.trustGivenByUser = false;
    script(bench, {typeText(u"1"_s), done(u"Typed."_s), done(u"Second."_s)});
    bench.runTask(u"Type 1"_s);
    QCOMPARE(bench.described(bench.lastTurn().log),
             u"info: Switched on accessibility, so that Orvane can read and operate applications.\n"
             "step: Typing “1”\nsuccess: Typed."_s);
    QVERIFY(!bench.lastTurn().log.constFirst().running);
    QVERIFY(bench.desktop.accessibility.trusted);
    bench.runTask(u"Another"_s);
    QCOMPARE(bench.described(bench.lastTurn().log), u"success: Second."_s);
}

void AgentLoopTest::aDesktopWithoutAccessibilityIsLeftToTheSteps()
{
    SessionBench bench;
    bench.desktop.accessibility.trusted = false;
    bench.desktop.accessibility.trustGivenByUser = false;
    bench.desktop.journal.failures[RecordedOperation::RequestTrust] = u"No service."_s;
    script(bench, {typeText(u"1"_s), done(u"It can't be typed."_s)});
    bench.runTask(u"Type 1"_s);
    QCOMPARE(bench.described(bench.lastTurn().log),
             u"failure: Typing “1” — No service.\nsuccess: It can't be typed."_s);
}

void AgentLoopTest::aPermissionOfTheUserIsNotAskedForBeforeItIsNeeded()
{
    SessionBench bench;
    bench.desktop.accessibility.trusted = false;
    script(bench, {done(u"Nothing to do."_s)});
    bench.runTask(u"Do nothing"_s);
    QCOMPARE(bench.described(bench.lastTurn().log), u"success: Nothing to do."_s);
    QCOMPARE(bench.desktop.accessibility.prompts, 0);
}

void AgentLoopTest::anErrorOfAStepIsFedBackAndTheRunGoesOn()
{
    SessionBench bench;
    bench.desktop.journal.failures[RecordedOperation::PostKeys] = u"The keyboard is locked."_s;
    script(bench, {typeText(u"1"_s), done(u"It did not work."_s)});
    bench.runTask(u"Type 1"_s);
    QCOMPARE(bench.transcript(), uR"(== conversation
system: (the system prompt)
user: User: Type 1
State: Frontmost app: unknown. Windows: none
assistant: {"action":"type_text","text":"1"}
user: Error: The keyboard is locked.
State: Frontmost app: unknown. Windows: none
== asked
(none)
== status
Thinking…
Typing “1”
Thinking…
(idle)
== log
failure: Typing “1” — The keyboard is locked.
success: It did not work.
== summary
It did not work.
== desktop
(none)
)"_s);
}

void AgentLoopTest::anUnknownActionIsFedBack()
{
    SessionBench bench;
    script(bench, {uR"({"action":"scroll_down"})"_s, done(u"I can't scroll."_s)});
    bench.runTask(u"Scroll down"_s);
    QCOMPARE(bench.described(bench.lastTurn().log),
             u"failure: Scroll Down — Unknown action “scroll_down”.\nsuccess: I can't scroll."_s);
    QCOMPARE(bench.engine->conversations.constLast().constLast().content,
             u"Error: Unknown action “scroll_down”.\nState: "_s + nothingOpen);
}

void AgentLoopTest::threeInvalidRepliesEndTheRun()
{
    SessionBench bench;
    script(bench, {u"I would open Safari."_s, u"{\"action\":"_s, u"[]"_s});
    bench.runTask(u"Open Safari"_s);
    QCOMPARE(bench.transcript(), uR"(== conversation
system: (the system prompt)
user: User: Open Safari
State: Frontmost app: unknown. Windows: none
assistant: I would open Safari.
user: Invalid. Reply with exactly one JSON action object.
assistant: {"action":
user: Invalid. Reply with exactly one JSON action object.
== asked
(none)
== status
Thinking…
(idle)
== log
failure: I couldn't work out a plan for that.
== summary
(none)
== desktop
(none)
)"_s);
}

void AgentLoopTest::validRepliesBetweenDoNotForgiveInvalidOnes()
{
    SessionBench bench;
    script(bench, {u"one"_s, typeText(u"1"_s), u"two"_s, typeText(u"2"_s), u"three"_s});
    bench.runTask(u"Type 1, then 2"_s);
    QCOMPARE(bench.transcript(), uR"(== conversation
system: (the system prompt)
user: User: Type 1, then 2
State: Frontmost app: unknown. Windows: none
assistant: one
user: Invalid. Reply with exactly one JSON action object.
assistant: {"action":"type_text","text":"1"}
user: Result: Typed text.
State: Frontmost app: unknown. Windows: none
assistant: two
user: Invalid. Reply with exactly one JSON action object.
assistant: {"action":"type_text","text":"2"}
user: Result: Typed text.
State: Frontmost app: unknown. Windows: none
== asked
(none)
== status
Thinking…
Typing “1”
Thinking…
Typing “2”
Thinking…
(idle)
== log
step: Typing “1”
step: Typing “2”
failure: I couldn't work out a plan for that.
== summary
(none)
== desktop
type “1”
type “2”
)"_s);
}

void AgentLoopTest::anInvalidReplyIsKeptAsItCame()
{
    SessionBench bench;
    script(bench, {u"  no plan \n"_s, done(u"Done."_s)});
    bench.runTask(u"Open Safari"_s);
    const ChatMessage kept = bench.engine->conversations.constLast().at(2);
    QVERIFY(kept == (ChatMessage{ChatMessage::Role::Assistant, u"  no plan \n"_s}));
}

void AgentLoopTest::theSameStepTwiceStopsTheRun()
{
    SessionBench bench;
    script(bench, {typeText(u"1"_s), typeText(u"1"_s), done(u"Never said."_s)});
    bench.runTask(u"Type 1"_s);
    QCOMPARE(bench.transcript(), uR"(== conversation
system: (the system prompt)
user: User: Type 1
State: Frontmost app: unknown. Windows: none
assistant: {"action":"type_text","text":"1"}
user: Result: Typed text.
State: Frontmost app: unknown. Windows: none
== asked
(none)
== status
Thinking…
Typing “1”
Thinking…
(idle)
== log
step: Typing “1”
failure: Stopped: the same step was repeated.
== summary
(none)
== desktop
type “1”
)"_s);
}

void AgentLoopTest::theSameStepWithItsKeysInAnotherOrderStopsTheRun()
{
    SessionBench bench;
    script(bench, {uR"({"action":"press_key","key":"l","modifiers":"command"})"_s,
                   uR"({"modifiers":"command","key":"l","action":"press_key"})"_s});
    bench.runTask(u"Press command L"_s);
    QCOMPARE(bench.described(bench.lastTurn().log),
             u"step: Pressing command+l\nfailure: Stopped: the same step was repeated."_s);
    QCOMPARE(bench.desktop.keyboard.strokes.size(), 1);
}

void AgentLoopTest::anotherStepBetweenMakesARepeatAllowed()
{
    SessionBench bench;
    script(bench, {typeText(u"1"_s), typeText(u"2"_s), typeText(u"1"_s), done(u"Typed."_s)});
    bench.runTask(u"Type 1, 2, 1"_s);
    QCOMPARE(bench.described(bench.lastTurn().log),
             u"step: Typing “1”\nstep: Typing “2”\nstep: Typing “1”\nsuccess: Typed."_s);
    QCOMPARE(bench.desktop.journal.lines, QStringList({u"type “1”"_s, u"type “2”"_s, u"type “1”"_s}));
}

void AgentLoopTest::anInvalidReplyBetweenDoesNotMakeARepeatAllowed()
{
    SessionBench bench;
    script(bench, {typeText(u"1"_s), u"no plan"_s, typeText(u"1"_s)});
    bench.runTask(u"Type 1"_s);
    QCOMPARE(bench.described(bench.lastTurn().log),
             u"step: Typing “1”\nfailure: Stopped: the same step was repeated."_s);
}

void AgentLoopTest::twelveStepsAreTheMost()
{
    SessionBench bench;
    script(bench, distinctSteps(13));
    bench.runTask(u"Type many numbers"_s);
    const QStringList expected = doneSteps(12) << u"failure: Stopped after too many steps."_s;
    QCOMPARE(bench.described(bench.lastTurn().log), expected.join(u'\n'));
    QVERIFY(bench.lastTurn().finished);
    QVERIFY(!bench.lastTurn().summary);
    QCOMPARE(bench.engine->conversations.size(), 12);
    QCOMPARE(bench.desktop.journal.lines.constLast(), u"type “12”"_s);
    QCOMPARE(bench.desktop.journal.lines.size(), 12);
}

void AgentLoopTest::anInvalidTwelfthReplyEndsWithTheStepLimit()
{
    SessionBench bench;
    script(bench, distinctSteps(11) << u"no plan"_s << done(u"Too late."_s));
    bench.runTask(u"Type many numbers"_s);
    const QStringList expected = doneSteps(11) << u"failure: Stopped after too many steps."_s;
    QCOMPARE(bench.described(bench.lastTurn().log), expected.join(u'\n'));
    QCOMPARE(bench.engine->conversations.size(), 12);
}

void AgentLoopTest::aThirdInvalidReplyThatIsTheTwelfthEndsWithoutAPlan()
{
    SessionBench bench;
    script(bench, QStringList{u"one"_s, u"two"_s} + distinctSteps(9) + QStringList{u"three"_s});
    bench.runTask(u"Type many numbers"_s);
    const QStringList expected = doneSteps(9) << u"failure: I couldn't work out a plan for that."_s;
    QCOMPARE(bench.described(bench.lastTurn().log), expected.join(u'\n'));
    QCOMPARE(bench.engine->conversations.size(), 12);
}

void AgentLoopTest::doneAsTheTwelfthReplyIsStillDone()
{
    SessionBench bench;
    script(bench, distinctSteps(11) << done(u"Just in time."_s));
    bench.runTask(u"Type many numbers"_s);
    QCOMPARE(bench.lastTurn().summary, u"Just in time."_s);
}

void AgentLoopTest::aDeclinedStepIsNotCarriedOut()
{
    SessionBench bench;
    bench.desktop.workspace.start(u"Safari"_s);
    script(bench, {quitApp(u"Safari"_s), done(u"Never said."_s)});
    bench.session->submit(u"Quit Safari"_s);
    QVERIFY(bench.waitForPending());
    QCOMPARE(bench.session->pending()->action.name, u"quit_app"_s);
    QCOMPARE(bench.described(bench.lastTurn().log), u"confirm: Closing Safari (running)"_s);
    bench.session->resolve(false);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.transcript(), uR"(== conversation
system: (the system prompt)
user: User: Quit Safari
State: Frontmost app: unknown. Windows: none
== asked
Quit Safari — unsaved work could be lost
== status
Thinking…
Closing Safari
Waiting for approval: Closing Safari
(idle)
== log
failure: Declined: Closing Safari
== summary
I didn't do that, as requested.
== desktop
(none)
)"_s);
}

void AgentLoopTest::anApprovedStepIsCarriedOut()
{
    SessionBench bench;
    bench.desktop.workspace.start(u"Safari"_s);
    script(bench, {quitApp(u"Safari"_s), done(u"Safari is closed."_s)});
    bench.session->submit(u"Quit Safari"_s);
    QVERIFY(bench.waitForPending());
    bench.session->resolve(true);
    QVERIFY(!bench.session->pending());
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.transcript(), uR"(== conversation
system: (the system prompt)
user: User: Quit Safari
State: Frontmost app: unknown. Windows: none
assistant: {"action":"quit_app","app":"Safari"}
user: Result: Safari quit.
State: Frontmost app: unknown. Windows: none
== asked
Quit Safari — unsaved work could be lost
== status
Thinking…
Closing Safari
Waiting for approval: Closing Safari
Thinking…
(idle)
== log
step: Closing Safari
success: Safari is closed.
== summary
Safari is closed.
== desktop
ask Safari to quit
wait 600 ms
)"_s);
}

void AgentLoopTest::anApprovalFromAnotherWindowGivesTheFocusBackFirst()
{
    SessionBench bench;
    RecordingWorkspace &workspace = bench.desktop.workspace;
    workspace.makeFrontmost(workspace.start(u"Messages"_s));
    script(bench, {pressReturn(), done(u"Sent."_s)});
    bench.session->submit(u"Send it"_s);
    QVERIFY(bench.waitForPending());
    workspace.makeFrontmost(workspace.start(u"Terminal"_s));
    bench.session->resolve(true);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.transcript(), uR"(== conversation
system: (the system prompt)
user: User: Send it
State: Frontmost app: Messages. Windows: none
assistant: {"action":"press_key","key":"return"}
user: Result: Pressed return.
State: Frontmost app: Messages. Windows: none
== asked
Press Return in Messages — this may send a message
== status
Thinking…
Pressing return
Waiting for approval: Pressing return
Thinking…
(idle)
== log
step: Pressing return
success: Sent.
== summary
Sent.
== desktop
activate Messages
press key 36
)"_s);
}

void AgentLoopTest::anApprovalForAnApplicationThatHasGoneFails()
{
    SessionBench bench;
    RecordingWorkspace &workspace = bench.desktop.workspace;
    workspace.makeFrontmost(workspace.start(u"Messages"_s));
    script(bench, {pressReturn(), done(u"Messages was closed."_s)});
    bench.session->submit(u"Send it"_s);
    QVERIFY(bench.waitForPending());
    workspace.running.clear();
    workspace.makeFrontmost(workspace.start(u"Terminal"_s));
    bench.session->resolve(true);
    QVERIFY(bench.waitForEnd());
    QVERIFY(bench.desktop.keyboard.strokes.isEmpty());
    QCOMPARE(bench.lastTurn().log.constFirst().kind, LogEntry::Kind::Failure);
    const QString fedBack = bench.engine->conversations.constLast().constLast().content;
    QVERIFY2(fedBack.startsWith(u"Error: "_s) && fedBack.contains(u"Messages"_s), qPrintable(fedBack));
    QVERIFY2(fedBack.endsWith(u".\nState: Frontmost app: Terminal. Windows: none"_s), qPrintable(fedBack));
    QCOMPARE(bench.lastTurn().summary, u"Messages was closed."_s);
}

void AgentLoopTest::anApprovalOfAStepWithoutFocusLeavesTheFocus()
{
    SessionBench bench;
    RecordingWorkspace &workspace = bench.desktop.workspace;
    workspace.start(u"Safari"_s);
    workspace.makeFrontmost(workspace.start(u"Messages"_s));
    script(bench, {quitApp(u"Safari"_s), done(u"Safari is closed."_s)});
    bench.session->submit(u"Quit Safari"_s);
    QVERIFY(bench.waitForPending());
    workspace.makeFrontmost(workspace.start(u"Terminal"_s));
    bench.session->resolve(true);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.desktop.journal.lines, QStringList({u"ask Safari to quit"_s, u"wait 600 ms"_s}));
}

void AgentLoopTest::anApplicationUnderAHarmlessNameIsQuitOnlyWhenApproved()
{
    SessionBench bench;
    RecordingWorkspace &workspace = bench.desktop.workspace;
    const ApplicationBundle browser{u"/usr/share/applications/firefox-esr.desktop"_s, u"Firefox ESR"_s};
    workspace.roles.insert(u"preview"_s, browser);
    workspace.start(browser);
    script(bench, {quitApp(u"Preview"_s), done(u"Preview is closed."_s)});
    bench.session->submit(u"Quit Preview"_s);
    QVERIFY(bench.waitForPending());
    QCOMPARE(bench.session->pending()->reason, u"Quit Preview (Firefox ESR) — unsaved work could be lost"_s);
    QCOMPARE(bench.desktop.journal.lines, QStringList());
    workspace.start(u"Preview"_s); // not the target of the question
    bench.session->resolve(true);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.desktop.journal.lines, QStringList({u"ask Firefox ESR to quit"_s, u"wait 600 ms"_s}));
}

void AgentLoopTest::aControlIsPressedOnlyWhenItsOwnLabelIsHarmlessOrApproved()
{
    SessionBench bench;
    const RunningApplication shop = bench.desktop.workspace.start(u"Shop"_s);
    bench.desktop.workspace.makeFrontmost(shop);
    RecordedTree tree;
    tree.add(0, {u"AXButton"_s, u"Confirm order"_s});
    bench.desktop.accessibility.trees.insert(shop.processIdentifier, tree);
    script(bench, {uR"({"action":"click","label":"conf"})"_s, done(u"Ordered."_s)});
    bench.session->submit(u"Go on"_s);
    QVERIFY(bench.waitForPending());
    QCOMPARE(bench.session->pending()->reason, u"Click “conf” (“Confirm order”) in Shop"_s);
    bench.session->resolve(false);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.desktop.journal.lines, QStringList());
}

void AgentLoopTest::stoppedWhileTheTargetIsLookedForIsARefusal()
{
    SessionBench bench;
    bench.desktop.journal.answersLater = true;
    bench.desktop.workspace.start(u"Safari"_s);
    script(bench, {quitApp(u"Safari"_s), done(u"Never said."_s)});
    connect(bench.session.get(), &AgentSession::statusChanged, bench.session.get(), [&bench] {
        if (bench.session->status() == u"Closing Safari"_s)
            bench.session->stop();
    });
    bench.session->submit(u"Quit Safari"_s);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.described(bench.lastTurn().log), u"failure: Declined: Closing Safari"_s);
    QCOMPARE(bench.desktop.journal.lines, QStringList());
}

void AgentLoopTest::cancelledBeforeTheFirstReply()
{
    SessionBench bench;
    script(bench, {done(u"Never said."_s)});
    bench.session->submit(u"Open Safari"_s);
    bench.session->stop();
    QVERIFY(bench.session->isRunning());
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.transcript(), uR"(== conversation
(none)
== asked
(none)
== status
(none)
== log
info: Cancelled
== summary
(none)
== desktop
(none)
)"_s);
}

void AgentLoopTest::cancelledWhileTheModelWrites()
{
    Gate gate;
    SessionBench bench;
    bench.engine->beforeReply = [&gate] { return gate.passed(); };
    script(bench, {typeText(u"1"_s)});
    bench.session->submit(u"Type 1"_s);
    QTRY_COMPARE(bench.engine->conversations.size(), 1);
    bench.session->stop();
    QVERIFY(bench.session->isRunning());
    gate.open();
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.transcript(), uR"(== conversation
system: (the system prompt)
user: User: Type 1
State: Frontmost app: unknown. Windows: none
== asked
(none)
== status
Thinking…
(idle)
== log
info: Cancelled
== summary
(none)
== desktop
(none)
)"_s);
}

void AgentLoopTest::cancelledWhileAStepIsCarriedOut()
{
    SessionBench bench;
    bench.desktop.journal.answersLater = true;
    script(bench, {typeText(u"1"_s), done(u"Never said."_s)});
    const auto stop = [&bench] { bench.session->stop(); };
    connect(bench.session.get(), &AgentSession::logEntryAppended, this, stop, Qt::SingleShotConnection);
    bench.runTask(u"Type 1"_s);
    QCOMPARE(bench.transcript(), uR"(== conversation
system: (the system prompt)
user: User: Type 1
State: Frontmost app: unknown. Windows: none
== asked
(none)
== status
Thinking…
Typing “1”
(idle)
== log
step: Typing “1”
info: Cancelled
== summary
(none)
== desktop
type “1”
)"_s);
}

void AgentLoopTest::stoppedWhileWaitingForApprovalIsARefusal()
{
    SessionBench bench;
    bench.desktop.workspace.start(u"Safari"_s);
    script(bench, {quitApp(u"Safari"_s)});
    bench.session->submit(u"Quit Safari"_s);
    QVERIFY(bench.waitForPending());
    bench.session->stop();
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.described(bench.lastTurn().log), u"failure: Declined: Closing Safari"_s);
    QCOMPARE(bench.lastTurn().summary, u"I didn't do that, as requested."_s);
    QVERIFY(bench.desktop.journal.lines.isEmpty());
}

QTEST_GUILESS_MAIN(AgentLoopTest)
#include "AgentLoopTest.moc"
