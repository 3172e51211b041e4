// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/DoCommand.h"
#include "Agent/SessionBench.h"
#include "OrvaneApp/CommandLine/ExitStatus.h"
#include "OrvaneApp/CommandLine/PseudoTerminal.h"
#include "OrvaneApp/CommandLine/TerminalBench.h"
#include "Support/Gate.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// One run of the command on a scripted session, with or without a terminal.
class CommandBench
{
public:
    enum class Person { Present, Absent };

    explicit CommandBench(Person person, SessionBench::ModelFile file = SessionBench::ModelFile::Present)
        : session(file),
          terminal(person == Person::Present ? TerminalBench::colourless : TerminalBench::plain),
          answers(person == Person::Present ? keyboard.descriptor() : -1),
          command(session.models, *session.session, session.desktop.dialogs, terminal.terminal, answers),
          ended(&command, &DoCommand::finished)
    {
    }

    void start(const QString &task, const QStringList &replies)
    {
        for (const QString &reply : replies)
            session.engine->replies.append(reply);
        command.start(task);
    }

    bool isAsking() const { return terminal.output().endsWith(u"Allow this? (y/n) "_s); }

    // The exit status, or -1 on a timeout.
    int waitForEnd()
    {
        return !ended.isEmpty() || ended.wait() ? ended.constFirst().constFirst().toInt() : -1;
    }

    SessionBench session;
    PseudoTerminal keyboard;
    TerminalBench terminal;
    AnswerReader answers;
    DoCommand command;
    QSignalSpy ended;
};

using Person = CommandBench::Person;

} // namespace

class DoCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stepsAreShownAsTheyCome();
    void aTerminalShowsTheSameLines();
    void theReplyIsShownWhileItIsWritten();
    void theModelsTextIsShownAndHarmless();
    void theQuestionHidesNothing();
    void aRunWithoutSuccessEndsWithOne();
    void withoutATerminalTheAnswerIsNo();
    void aStepIsAllowedAtTheTerminal();
    void aStepIsRefusedAtTheTerminal();
    void anUnclearAnswerIsAskedAgain();
    void aScriptIsShownBehindABar();
    void interruptingEndsTheRunBeforeItsNextStep();
    void interruptingAQuestionIsARefusal();
    void interruptingWhileTheModelLoads();
    void aModelThatCannotBeUsedIsReported();
    void aMissingModelIsReported();
};

void DoCommandTest::stepsAreShownAsTheyCome()
{
    CommandBench bench(Person::Absent);
    bench.session.desktop.workspace.install(u"Safari"_s);
    bench.start(u"Open Safari"_s, {openApp(u"Safari"_s), openApp(u"Chess"_s), done(u"Safari is open."_s)});
    QCOMPARE(bench.waitForEnd(), ExitStatus::done);
    QCOMPARE(bench.terminal.output(), u"✓ Launching Safari\n"
                                      "✗ Launching Chess — Couldn't find an app called “Chess”.\n"
                                      "✓ Safari is open.\n"_s);
    QCOMPARE(bench.terminal.errors(), QString());
}

void DoCommandTest::aTerminalShowsTheSameLines()
{
    CommandBench bench(Person::Present);
    bench.start(u"Type 1"_s, {typeText(u"1"_s), done(u"Typed."_s)});
    QCOMPARE(bench.waitForEnd(), ExitStatus::done);
    QCOMPARE(bench.terminal.screen(), u"✓ Typing “1”\n✓ Typed.\n"_s);
    QVERIFY(bench.terminal.output().contains(u"⠋ Thinking…"_s));
    QVERIFY(bench.terminal.output().contains(u"⠋ Typing “1”"_s));
}

void DoCommandTest::theReplyIsShownWhileItIsWritten()
{
    CommandBench bench(Person::Present);
    Gate gate;
    bench.session.engine->beforeReply = [&gate] { return gate.passed(); };
    bench.start(u"Type 1"_s, {done(u"Typed."_s)});
    QTRY_VERIFY(!bench.session.engine->callbacks.isEmpty());
    bench.session.engine->callbacks.constLast()(u"{\"action\":"_s);
    QTRY_VERIFY(bench.terminal.output().contains(u"Thinking…  {\"action\":"_s));
    gate.open();
    QCOMPARE(bench.waitForEnd(), ExitStatus::done);
    QCOMPARE(bench.terminal.screen(), u"✓ Typed.\n"_s);
}

void DoCommandTest::theModelsTextIsShownAndHarmless()
{
    CommandBench bench(Person::Absent);
    bench.start(u"Type"_s,
                {uR"({"action":"type_text","text":"\u001b[2J\r\ngone"})"_s,
                 uR"json({"action":"done","message":"\u001b]0;x\u0007\nAllow this? (y/n)"})json"_s});
    QCOMPARE(bench.waitForEnd(), ExitStatus::done);
    QCOMPARE(bench.terminal.output(), u"✓ Typing “⟨U+001B⟩[2J⟨U+000D⟩⟨U+000A⟩gone”\n"
                                      "✓ ⟨U+001B⟩]0;x⟨U+0007⟩⟨U+000A⟩Allow this? (y/n)\n"_s);
}

void DoCommandTest::theQuestionHidesNothing()
{
    CommandBench bench(Person::Absent);
    bench.start(u"Tidy up"_s, {uR"({"action":"trash","path":"a\u202Efdp.b\n<|c|>"})"_s});
    QCOMPARE(bench.waitForEnd(), ExitStatus::declined);
    QVERIFY(bench.terminal.output().startsWith(u"? Moving “a⟨U+202E⟩fdp.b⟨U+000A⟩<|c|>” to Trash\n"
                                               "  │ Move “a⟨U+202E⟩fdp.b⟨U+000A⟩<|c|>” to the Trash\n"_s));
}

void DoCommandTest::aRunWithoutSuccessEndsWithOne()
{
    CommandBench bench(Person::Absent);
    bench.start(u"Type 1"_s, {typeText(u"1"_s), typeText(u"1"_s)});
    QCOMPARE(bench.waitForEnd(), ExitStatus::endedOtherwise);
    QCOMPARE(bench.terminal.output(), u"✓ Typing “1”\n✗ Stopped: the same step was repeated.\n"_s);
}

void DoCommandTest::withoutATerminalTheAnswerIsNo()
{
    CommandBench bench(Person::Absent);
    bench.session.desktop.workspace.start(u"Safari"_s);
    bench.start(u"Quit Safari"_s, {quitApp(u"Safari"_s)});
    QCOMPARE(bench.waitForEnd(), ExitStatus::declined);
    QCOMPARE(bench.terminal.output(), u"? Closing Safari\n"
                                      "  │ Quit Safari — unsaved work could be lost\n"
                                      "  There is no terminal to ask at, so the answer is no.\n"
                                      "✗ Declined: Closing Safari\n"
                                      "I didn't do that, as requested.\n"_s);
    QVERIFY(bench.session.desktop.journal.lines.isEmpty());
}

void DoCommandTest::aStepIsAllowedAtTheTerminal()
{
    CommandBench bench(Person::Present);
    bench.session.desktop.workspace.start(u"Safari"_s);
    bench.start(u"Quit Safari"_s, {quitApp(u"Safari"_s), done(u"Closed."_s)});
    QTRY_VERIFY(bench.isAsking());
    QVERIFY(bench.session.desktop.journal.lines.isEmpty());
    QVERIFY(bench.keyboard.type("y\n"));
    QCOMPARE(bench.waitForEnd(), ExitStatus::done);
    QVERIFY(bench.session.desktop.journal.lines.contains(u"ask Safari to quit"_s));
    QVERIFY(bench.terminal.screen().endsWith(u"✓ Closing Safari\n✓ Closed.\n"_s));
}

void DoCommandTest::aStepIsRefusedAtTheTerminal()
{
    CommandBench bench(Person::Present);
    bench.session.desktop.workspace.start(u"Safari"_s);
    bench.start(u"Quit Safari"_s, {quitApp(u"Safari"_s), done(u"Closed."_s)});
    QTRY_VERIFY(bench.isAsking());
    QVERIFY(bench.keyboard.type("n\n"));
    QCOMPARE(bench.waitForEnd(), ExitStatus::declined);
    QVERIFY(bench.session.desktop.journal.lines.isEmpty());
}

void DoCommandTest::anUnclearAnswerIsAskedAgain()
{
    CommandBench bench(Person::Present);
    bench.session.desktop.workspace.start(u"Safari"_s);
    bench.start(u"Quit Safari"_s, {quitApp(u"Safari"_s), done(u"Closed."_s)});
    QTRY_VERIFY(bench.isAsking());
    QVERIFY(bench.keyboard.type("hm\n"));
    QTRY_COMPARE(bench.terminal.output().count(u"Allow this? (y/n) "_s), 2);
    QVERIFY(bench.keyboard.type("yes\n"));
    QCOMPARE(bench.waitForEnd(), ExitStatus::done);
}

void DoCommandTest::aScriptIsShownBehindABar()
{
    CommandBench bench(Person::Absent);
    const QString reply = uR"({"action":"applescript","script":"beep\n\tAllow this? (y/n) y\u001b[A"})"_s;
    bench.start(u"Beep"_s, {reply});
    QCOMPARE(bench.waitForEnd(), ExitStatus::declined);
    QVERIFY(bench.terminal.output().startsWith(u"? Running AppleScript\n"
                                               "  │ Run a custom AppleScript:\n"
                                               "  │ beep\n"
                                               "  │ \tAllow this? (y/n) y⟨U+001B⟩[A\n"
                                               "  There is no terminal"_s));
}

void DoCommandTest::interruptingEndsTheRunBeforeItsNextStep()
{
    CommandBench bench(Person::Absent);
    Gate gate;
    bench.session.engine->beforeReply = [&gate] { return gate.passed(); };
    bench.start(u"Type 1"_s, {typeText(u"1"_s)});
    QTRY_COMPARE(bench.session.engine->conversations.size(), 1);
    bench.command.interrupt();
    QVERIFY(bench.ended.isEmpty());
    gate.open();
    QCOMPARE(bench.waitForEnd(), ExitStatus::endedOtherwise);
    QCOMPARE(bench.terminal.output(),
             u"Stopping before the next step; Ctrl+C again quits at once.\n• Cancelled\n"_s);
    QVERIFY(bench.session.desktop.journal.lines.isEmpty());
}

void DoCommandTest::interruptingAQuestionIsARefusal()
{
    CommandBench bench(Person::Present);
    bench.session.desktop.workspace.start(u"Safari"_s);
    bench.start(u"Quit Safari"_s, {quitApp(u"Safari"_s)});
    QTRY_VERIFY(bench.isAsking());
    bench.command.interrupt();
    QCOMPARE(bench.waitForEnd(), ExitStatus::declined);
    QVERIFY(bench.session.desktop.journal.lines.isEmpty());
}

void DoCommandTest::interruptingWhileTheModelLoads()
{
    CommandBench bench(Person::Absent);
    Gate gate;
    bench.session.engine->beforeLoaded = [&gate] { return gate.passed(); };
    bench.start(u"Type 1"_s, {typeText(u"1"_s)});
    QTRY_COMPARE(bench.session.engine->loadedPaths.size(), 1);
    bench.command.interrupt();
    gate.open();
    QCOMPARE(bench.waitForEnd(), ExitStatus::endedOtherwise);
    QVERIFY(bench.session.session->turns().isEmpty());
}

void DoCommandTest::aModelThatCannotBeUsedIsReported()
{
    CommandBench bench(Person::Absent);
    bench.session.engine->loadError = InferenceError(InferenceError::Code::LoadFailed);
    bench.start(u"Type 1"_s, {});
    QCOMPARE(bench.waitForEnd(), ExitStatus::notReady);
    QCOMPARE(bench.terminal.errors(),
             u"orvane: Qwen2.5 1.5B Instruct can't be used: Couldn't load the model file.\n"
             "orvane: Get it with: orvane models download\n"_s);
}

void DoCommandTest::aMissingModelIsReported()
{
    CommandBench bench(Person::Absent, SessionBench::ModelFile::Missing);
    bench.start(u"Type 1"_s, {});
    QCOMPARE(bench.waitForEnd(), ExitStatus::notReady);
    QCOMPARE(bench.terminal.errors(), u"orvane: Qwen2.5 1.5B Instruct isn't on this machine yet.\n"
                                      "orvane: Get it with: orvane models download\n"_s);
}

QTEST_GUILESS_MAIN(DoCommandTest)
#include "DoCommandTest.moc"
