// SPDX-License-Identifier: Apache-2.0
#include "Agent/SessionBench.h"
#include "Support/Gate.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <csignal>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// A keyboard whose keys are held by the test.
class HeldKeyboard : public Keyboard
{
public:
    Gate gate;
    int posts = 0;

    QCoro::Task<void> post(QList<KeyStroke>, std::chrono::microseconds,
                           std::optional<RunningApplication>) override
    {
        ++posts;
        return gate.passed();
    }
};

// All published state as one text.
QString published(const AgentSession &session)
{
    QString text = u"%1 turns"_s.arg(session.turns().size());
    for (const Turn &turn : session.turns())
        text +=
            u" [%1|%2|%3]"_s.arg(SessionBench::described(turn.log), turn.finished ? u"finished"_s : u"open"_s,
                                 turn.summary.value_or(u"none"_s));
    return text + u" running=%1 status=%2 preview=%3 pending=%4"_s.arg(session.isRunning())
                      .arg(session.status(), session.streamPreview(),
                           session.pending() ? session.pending()->reason : u"none"_s);
}

} // namespace

// Published state, user commands, and re-entrancy.
class AgentSessionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewSessionIsIdleAndEmpty();
    void blankTasksAreIgnored_data();
    void blankTasksAreIgnored();
    void aTaskWhileOneRunsIsIgnored();
    void aTaskAfterAnotherGetsATurnOfItsOwn();
    void submittingReturnsAtOnce();
    void everyEndLeavesTheSessionIdle();

    void changesAreAnnouncedBeforeAndNotifiedAfter();
    void finerSignalsTellWhatChanged();
    void aCopyOfTheTurnsNeverChanges();

    void theReplyStreamsIntoThePreview();
    void piecesThatComeTooLateAreDropped();
    void piecesForASessionThatIsGoneAreDropped();

    void anAnswerWithNothingWaitingDoesNothing();
    void theFirstAnswerCounts();
    void anAnswerGivenWhileTheQuestionIsAnnounced();
    void stoppingAnIdleSessionDoesNotStopTheNextTask();
    void stoppingInterruptsTheScript();

    void aTaskCanBeStoppedByTheFirstSignalsOfIt();
    void aTaskSubmittedBeforeAnotherIsAnnouncedComesFirst();
    void aFinishedTurnIsThereForEverySlot_data();
    void aFinishedTurnIsThereForEverySlot();
    void aSlotThatDestroysTheSessionEndsTheProgram();

    void clearingForgetsTheHistory();
    void clearingWhileATaskRunsIsIgnored();

    void aSessionMayBeDestroyedWhileTheModelLoads();
    void aSessionMayBeDestroyedWhileTheModelWrites();
    void aSessionMayBeDestroyedDuringAStep();
    void aSessionDestroyedBeforeAStepLeavesItUndone();
    void aSessionMayBeDestroyedWhileItWaitsForApproval();
    void anotherSessionWorksWithTheSameModel();
};

void AgentSessionTest::aNewSessionIsIdleAndEmpty()
{
    const SessionBench bench;
    QVERIFY(bench.session->turns().isEmpty());
    QVERIFY(!bench.session->isRunning());
    QVERIFY(bench.session->status().isEmpty());
    QVERIFY(bench.session->streamPreview().isEmpty());
    QVERIFY(!bench.session->pending());
    QCOMPARE(AgentSession::maxSteps, 12);
}

void AgentSessionTest::blankTasksAreIgnored_data()
{
    QTest::addColumn<QString>("task");
    QTest::newRow("empty") << QString();
    QTest::newRow("blanks") << u"   "_s;
    QTest::newRow("line breaks and tabs") << u" \n\t\r\n "_s;
}

void AgentSessionTest::blankTasksAreIgnored()
{
    QFETCH(QString, task);
    SessionBench bench;
    QSignalSpy announced(bench.session.get(), &AgentSession::willChange);
    bench.session->submit(task);
    QVERIFY(!bench.session->isRunning());
    QVERIFY(bench.session->turns().isEmpty());
    QCOMPARE(announced.size(), 0);
}

void AgentSessionTest::aTaskWhileOneRunsIsIgnored()
{
    SessionBench bench;
    bench.engine->replies = {done(u"First."_s), done(u"Second."_s)};
    bench.session->submit(u"First"_s);
    bench.session->submit(u"Second"_s);
    QCOMPARE(bench.session->turns().size(), 1);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.session->turns().size(), 1);
    QCOMPARE(bench.lastTurn().command, u"First"_s);
    QCOMPARE(bench.engine->conversations.size(), 1);
}

void AgentSessionTest::aTaskAfterAnotherGetsATurnOfItsOwn()
{
    SessionBench bench;
    bench.engine->replies = {done(u"First."_s), done(u"Second."_s)};
    bench.runTask(u"First"_s);
    const Turn first = bench.lastTurn();
    bench.runTask(u"Second"_s);
    QCOMPARE(bench.session->turns().size(), 2);
    QVERIFY(bench.session->turns().constFirst() == first);
    QCOMPARE(bench.lastTurn().summary, u"Second."_s);
    // The second conversation contains nothing of the first.
    QCOMPARE(bench.engine->conversations.constLast().size(), 2);
}

void AgentSessionTest::submittingReturnsAtOnce()
{
    SessionBench bench(SessionBench::ModelFile::Missing);
    bench.session->submit(u" Open Safari "_s);
    QVERIFY(bench.session->isRunning());
    QCOMPARE(bench.lastTurn().command, u"Open Safari"_s);
    QVERIFY(!bench.lastTurn().finished);
    QVERIFY(bench.lastTurn().log.isEmpty());
    QVERIFY(bench.waitForEnd());
}

void AgentSessionTest::everyEndLeavesTheSessionIdle()
{
    SessionBench bench;
    bench.engine->replies = {u"no plan"_s,     u"no plan"_s,     u"no plan"_s, typeText(u"1"_s),
                             typeText(u"1"_s), done(u"Done."_s), u"no plan"_s};
    // In turn: no plan, a repeat, done, an engine error.
    for (int run = 0; run < 4; ++run) {
        bench.runTask(u"Type 1"_s);
        QVERIFY(bench.lastTurn().finished);
        QVERIFY(!bench.session->isRunning());
        QVERIFY(bench.session->status().isEmpty());
        QVERIFY(bench.session->streamPreview().isEmpty());
        QVERIFY(!bench.session->pending());
    }
    QCOMPARE(bench.described(bench.lastTurn().log), u"failure: The model failed while generating."_s);
}

void AgentSessionTest::changesAreAnnouncedBeforeAndNotifiedAfter()
{
    SessionBench bench;
    TalkativeEngine &engine = *bench.engine;
    AgentSession &session = *bench.session;
    bench.desktop.workspace.start(u"Safari"_s);
    bench.engine->replies = {typeText(u"1"_s), quitApp(u"Safari"_s), done(u"Done."_s)};
    Gate gate;
    bench.engine->beforeReply = [&gate] { return gate.passed(); };

    QString known = published(session);
    int announced = 0;
    const auto announce = [&] {
        ++announced;
        // Unchanged since the last notification, and before the announced change.
        QCOMPARE(published(session), known);
    };
    QStringList notified;
    const auto notify = [&](const QString &property) {
        QVERIFY2(announced > 0, "changed without an announcement");
        notified.append(property);
        known = published(session);
    };
    connect(&session, &AgentSession::willChange, this, announce);
    connect(&session, &AgentSession::turnsChanged, this, [&] { notify(u"turns"_s); });
    connect(&session, &AgentSession::isRunningChanged, this, [&] { notify(u"isRunning"_s); });
    connect(&session, &AgentSession::statusChanged, this, [&] { notify(u"status"_s); });
    connect(&session, &AgentSession::streamPreviewChanged, this, [&] { notify(u"streamPreview"_s); });
    connect(&session, &AgentSession::pendingChanged, this, [&] { notify(u"pending"_s); });

    session.submit(u"Type 1, then quit Safari"_s);
    QTRY_COMPARE(engine.callbacks.size(), 1);
    engine.callbacks[0](u"{"_s);
    QTRY_COMPARE(session.streamPreview(), u"{"_s);
    gate.open();
    QVERIFY(bench.waitForPending());
    session.resolve(true);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.lastTurn().summary, u"Done."_s);
    for (const char *property : {"turns", "isRunning", "status", "streamPreview", "pending"})
        QVERIFY2(notified.contains(QLatin1String(property)), property);
    QCOMPARE(published(session), known);
}

void AgentSessionTest::finerSignalsTellWhatChanged()
{
    SessionBench bench;
    AgentSession &session = *bench.session;
    bench.engine->replies = {typeText(u"1"_s), done(u"Done."_s)};
    QStringList events;
    connect(&session, &AgentSession::turnAppended, this, [&](int turn) { events << u"turn %1"_s.arg(turn); });
    connect(&session, &AgentSession::logEntryAppended, this, [&](int turn, int entry) {
        const LogEntry line = session.turns()[turn].log[entry];
        events << u"entry %1.%2 %3"_s.arg(turn).arg(entry).arg(SessionBench::described({line}));
    });
    connect(&session, &AgentSession::logEntryChanged, this, [&](int turn, int entry) {
        const LogEntry line = session.turns()[turn].log[entry];
        events << u"changed %1.%2 %3"_s.arg(turn).arg(entry).arg(SessionBench::described({line}));
    });
    connect(&session, &AgentSession::turnFinished, this, [&](int turn) {
        events << u"finished %1 %2"_s.arg(turn).arg(session.isRunning() ? u"running"_s : u"idle"_s);
    });
    bench.runTask(u"Type 1"_s);
    QCOMPARE(events, QStringList({u"turn 0"_s, u"entry 0.0 step: Typing “1” (running)"_s,
                                  u"changed 0.0 step: Typing “1”"_s, u"entry 0.1 success: Done."_s,
                                  u"finished 0 idle"_s}));
}

void AgentSessionTest::aCopyOfTheTurnsNeverChanges()
{
    SessionBench bench;
    AgentSession &session = *bench.session;
    bench.engine->replies = {typeText(u"1"_s), done(u"Done."_s)};
    QList<QList<Turn>> copies;
    QStringList texts;
    connect(&session, &AgentSession::willChange, this, [&] {
        copies.append(session.turns());
        texts.append(copies.constLast().isEmpty()
                         ? QString()
                         : SessionBench::described(copies.constLast().constLast().log));
    });
    bench.runTask(u"Type 1"_s);
    QVERIFY(texts.contains(u"step: Typing “1” (running)"_s));
    for (qsizetype i = 0; i < copies.size(); ++i) {
        const QString text =
            copies[i].isEmpty() ? QString() : SessionBench::described(copies[i].constLast().log);
        QCOMPARE(text, texts[i]);
    }
}

void AgentSessionTest::theReplyStreamsIntoThePreview()
{
    SessionBench bench;
    TalkativeEngine &engine = *bench.engine;
    Gate gate;
    bench.engine->beforeReply = [&gate] { return gate.passed(); };
    bench.engine->replies = {done(u"Grüße 👋"_s)};
    bench.session->submit(u"Greet"_s);
    QTRY_COMPARE(engine.callbacks.size(), 1);
    QVERIFY(bench.session->streamPreview().isEmpty());

    engine.callbacks[0](u"Grü"_s);
    // The callback comes on the engine's thread, so nothing may change until the main thread's event loop
    // runs.
    QVERIFY(bench.session->streamPreview().isEmpty());
    SerialQueue engineThread(u"engine"_s);
    engineThread.post([&engine] { engine.callbacks[0](u"ße 👋"_s); });
    QTRY_COMPARE(bench.session->streamPreview(), u"Grüße 👋"_s);
    gate.open();
    QVERIFY(bench.waitForEnd());
    QVERIFY(bench.session->streamPreview().isEmpty());
}

void AgentSessionTest::piecesThatComeTooLateAreDropped()
{
    SessionBench bench;
    TalkativeEngine &engine = *bench.engine;
    Gate gate;
    bench.engine->replies = {typeText(u"1"_s), done(u"Done."_s)};
    const auto holdNextReply = [&] { bench.engine->beforeReply = [&gate] { return gate.passed(); }; };
    connect(bench.session.get(), &AgentSession::logEntryAppended, this, holdNextReply);
    bench.session->submit(u"Type 1"_s);
    QTRY_COMPARE(engine.callbacks.size(), 2);

    // During the second reply, a piece of the first one must be ignored.
    engine.callbacks[0](u"stale"_s);
    engine.callbacks[1](u"{\"ac"_s);
    QTRY_COMPARE(bench.session->streamPreview(), u"{\"ac"_s);
    gate.open();
    QVERIFY(bench.waitForEnd());

    engine.callbacks[1](u"stale"_s);
    QCoreApplication::processEvents();
    QVERIFY(bench.session->streamPreview().isEmpty());
}

void AgentSessionTest::piecesForASessionThatIsGoneAreDropped()
{
    SessionBench bench;
    TalkativeEngine &engine = *bench.engine;
    bench.engine->replies = {done(u"Done."_s)};
    bench.runTask(u"Type 1"_s);
    engine.callbacks[0](u"in flight"_s);
    bench.session.reset();
    engine.callbacks[0](u"too late"_s);
    QCoreApplication::processEvents();
}

void AgentSessionTest::anAnswerWithNothingWaitingDoesNothing()
{
    SessionBench bench;
    QSignalSpy announced(bench.session.get(), &AgentSession::willChange);
    bench.session->resolve(true);
    bench.session->resolve(false);
    QCOMPARE(announced.size(), 0);

    // In particular, it does not answer a later question.
    bench.desktop.workspace.start(u"Safari"_s);
    bench.engine->replies = {quitApp(u"Safari"_s)};
    bench.session->submit(u"Quit Safari"_s);
    bench.session->resolve(true);
    QVERIFY(bench.waitForPending());
    bench.session->resolve(false);
    QVERIFY(bench.waitForEnd());
    QVERIFY(bench.desktop.journal.lines.isEmpty());
}

void AgentSessionTest::theFirstAnswerCounts()
{
    SessionBench bench;
    AgentSession &session = *bench.session;
    bench.desktop.workspace.start(u"Safari"_s);
    bench.engine->replies = {quitApp(u"Safari"_s)};
    // Answers "yes" while the question is being withdrawn because the user said "no".
    connect(&session, &AgentSession::pendingChanged, this, [&session] {
        if (!session.pending())
            session.resolve(true);
    });
    session.submit(u"Quit Safari"_s);
    QVERIFY(bench.waitForPending());
    session.resolve(false);
    session.resolve(true);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.described(bench.lastTurn().log), u"failure: Declined: Closing Safari"_s);
    QVERIFY(bench.desktop.journal.lines.isEmpty());
}

void AgentSessionTest::anAnswerGivenWhileTheQuestionIsAnnounced()
{
    SessionBench bench;
    AgentSession &session = *bench.session;
    bench.desktop.workspace.start(u"Safari"_s);
    bench.engine->replies = {quitApp(u"Safari"_s), done(u"Closed."_s)};
    connect(&session, &AgentSession::pendingChanged, this, [&session] {
        if (session.pending())
            session.resolve(true);
    });
    bench.runTask(u"Quit Safari"_s);
    QVERIFY(!session.pending());
    QCOMPARE(bench.described(bench.lastTurn().log), u"step: Closing Safari\nsuccess: Closed."_s);
}

void AgentSessionTest::stoppingAnIdleSessionDoesNotStopTheNextTask()
{
    SessionBench bench;
    bench.engine->replies = {done(u"Done."_s)};
    bench.session->stop();
    bench.runTask(u"Do nothing"_s);
    QCOMPARE(bench.lastTurn().summary, u"Done."_s);
}

void AgentSessionTest::stoppingInterruptsTheScript()
{
    SessionBench bench;
    AgentSession &session = *bench.session;
    bench.engine->replies = {uR"({"action":"applescript","script":"delay 100"})"_s, done(u"Never said."_s)};
    bench.desktop.scripting.whileRunning = [&session] { session.stop(); };
    connect(&session, &AgentSession::pendingChanged, &session, [&session] { session.resolve(true); });
    bench.runTask(u"Wait"_s);
    QCOMPARE(bench.desktop.scripting.interruptions, 1);
    QCOMPARE(bench.lastTurn().log.last().text, u"Cancelled"_s);
}

void AgentSessionTest::aTaskCanBeStoppedByTheFirstSignalsOfIt()
{
    for (const auto signal : {&AgentSession::turnsChanged, &AgentSession::isRunningChanged}) {
        SessionBench bench;
        AgentSession &session = *bench.session;
        bench.engine->replies = {typeText(u"1"_s), done(u"Never said."_s)};
        connect(&session, signal, &session, &AgentSession::stop, Qt::SingleShotConnection);
        bench.runTask(u"Type 1"_s);
        QCOMPARE(bench.described(bench.lastTurn().log), u"info: Cancelled"_s);
        QVERIFY(bench.engine->conversations.isEmpty());
    }
}

void AgentSessionTest::aTaskSubmittedBeforeAnotherIsAnnouncedComesFirst()
{
    SessionBench bench;
    AgentSession &session = *bench.session;
    bench.engine->replies = {done(u"First."_s), done(u"Second."_s)};
    const auto submit = [&session] { session.submit(u"First"_s); };
    connect(&session, &AgentSession::willChange, &session, submit, Qt::SingleShotConnection);
    bench.runTask(u"Second"_s);
    QCOMPARE(session.turns().size(), 1);
    QCOMPARE(bench.lastTurn().command, u"First"_s);
    QCOMPARE(bench.engine->conversations.size(), 1);
}

void AgentSessionTest::aFinishedTurnIsThereForEverySlot_data()
{
    QTest::addColumn<bool>("whenIdle");
    QTest::newRow("cleared when the session is idle") << true;
    QTest::newRow("cleared when the turn has finished") << false;
}

void AgentSessionTest::aFinishedTurnIsThereForEverySlot()
{
    QFETCH(bool, whenIdle);
    SessionBench bench;
    AgentSession &session = *bench.session;
    bench.engine->replies = {done(u"Done."_s)};
    const auto clear = [&session] {
        if (!session.isRunning())
            session.clearHistory();
    };
    if (whenIdle)
        connect(&session, &AgentSession::isRunningChanged, this, clear);
    else
        connect(&session, &AgentSession::turnFinished, this, clear);
    QStringList commands;
    connect(&session, &AgentSession::turnFinished, this, [&](int turn) {
        commands.append(turn < session.turns().size() ? session.turns().at(turn).command : u"(gone)"_s);
    });
    bench.runTask(u"Do nothing"_s);
    QCOMPARE(commands, QStringList(u"Do nothing"_s));
    QVERIFY(session.turns().isEmpty());
}

void AgentSessionTest::aSlotThatDestroysTheSessionEndsTheProgram()
{
    // In a child process, which must abort rather than continue with freed memory.
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        const rlimit noCoreFile{0, 0};
        setrlimit(RLIMIT_CORE, &noCoreFile);
        signal(SIGABRT, SIG_DFL);
        alarm(60); // one that hangs ends with another signal
        SessionBench bench;
        const auto destroy = [&bench] { bench.session.reset(); };
        connect(bench.session.get(), &AgentSession::turnAppended, this, destroy);
        bench.session->submit(u"Do nothing"_s);
        _exit(0);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT);
}

void AgentSessionTest::clearingForgetsTheHistory()
{
    SessionBench bench;
    bench.engine->replies = {done(u"First."_s), done(u"Second."_s)};
    bench.runTask(u"First"_s);
    QSignalSpy announced(bench.session.get(), &AgentSession::willChange);
    QSignalSpy cleared(bench.session.get(), &AgentSession::historyCleared);
    bench.session->clearHistory();
    QVERIFY(bench.session->turns().isEmpty());
    QCOMPARE(announced.size(), 1);
    QCOMPARE(cleared.size(), 1);
    bench.session->clearHistory();
    QCOMPARE(announced.size(), 1);
    bench.runTask(u"Second"_s);
    QCOMPARE(bench.session->turns().size(), 1);
    QCOMPARE(bench.lastTurn().summary, u"Second."_s);
}

void AgentSessionTest::clearingWhileATaskRunsIsIgnored()
{
    SessionBench bench;
    bench.engine->replies = {done(u"Done."_s)};
    bench.session->submit(u"Do nothing"_s);
    bench.session->clearHistory();
    QCOMPARE(bench.session->turns().size(), 1);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.lastTurn().summary, u"Done."_s);
}

void AgentSessionTest::aSessionMayBeDestroyedWhileTheModelLoads()
{
    Gate gate;
    SessionBench bench;
    bench.engine->beforeLoaded = [&gate] { return gate.passed(); };
    bench.session->submit(u"Open Safari"_s);
    QTRY_COMPARE(bench.engine->loadedPaths.size(), 1);
    bench.session.reset();
    gate.open();
    QTRY_VERIFY(bench.models.state() == ModelManager::State::loaded());
    QVERIFY(bench.engine->conversations.isEmpty());
}

void AgentSessionTest::aSessionMayBeDestroyedWhileTheModelWrites()
{
    Gate gate;
    bool answered = false;
    SessionBench bench;
    bench.engine->beforeReply = [&gate] { return gate.passed(); };
    bench.engine->replies = {typeText(u"1"_s)};
    bench.session->submit(u"Type 1"_s);
    QTRY_COMPARE(bench.engine->conversations.size(), 1);
    bench.session.reset();
    bench.engine->beforeReply = [&answered]() -> QCoro::Task<void> {
        answered = true;
        return Gate().passed();
    };
    gate.open();

    // The second session's replies come after the first one's.
    bench.engine->replies = {done(u"Second."_s)};
    AgentSession second(bench.models, bench.desktop.services());
    second.submit(u"Second"_s);
    QTRY_VERIFY(!second.isRunning());
    QVERIFY(answered);
    QVERIFY(bench.desktop.journal.lines.isEmpty());
}

void AgentSessionTest::aSessionMayBeDestroyedDuringAStep()
{
    SessionBench bench;
    HeldKeyboard keyboard;
    const Desktop all = bench.desktop.services();
    const Desktop desktop{all.session,   all.workspace, all.accessibility, keyboard, all.screenCapture,
                          all.scripting, all.files,     all.dialogs,       all.clock};
    bench.engine->replies = {typeText(u"1"_s), done(u"Never said."_s)};
    bench.session = std::make_unique<AgentSession>(bench.models, desktop);
    bench.session->submit(u"Type 1"_s);
    QTRY_COMPARE(keyboard.posts, 1);
    bench.session.reset();
    keyboard.gate.open();

    AgentSession second(bench.models, desktop);
    bench.engine->replies = {done(u"Second."_s)};
    second.submit(u"Second"_s);
    QTRY_VERIFY(!second.isRunning());
    QCOMPARE(second.turns().constFirst().summary, u"Second."_s);
    QCOMPARE(bench.engine->conversations.size(), 2);
}

void AgentSessionTest::aSessionDestroyedBeforeAStepLeavesItUndone()
{
    SessionBench bench;
    bench.desktop.journal.answersLater = true;
    bench.engine->replies = {typeText(u"1"_s), done(u"Never said."_s)};
    // Deleted on the next event loop iteration, when the step looks for the frontmost application.
    const QPointer<AgentSession> first = bench.session.get();
    const auto remove = [&bench] { bench.session.release()->deleteLater(); };
    connect(first, &AgentSession::logEntryAppended, this, remove);
    bench.session->submit(u"Type 1"_s);
    QTRY_VERIFY(!first);

    AgentSession second(bench.models, bench.desktop.services());
    bench.engine->replies = {done(u"Second."_s)};
    second.submit(u"Second"_s);
    QTRY_VERIFY(!second.isRunning());
    QVERIFY(bench.desktop.journal.lines.isEmpty());
    QCOMPARE(bench.engine->conversations.size(), 2);
}

void AgentSessionTest::aSessionMayBeDestroyedWhileItWaitsForApproval()
{
    SessionBench bench;
    bench.desktop.workspace.start(u"Safari"_s);
    bench.engine->replies = {quitApp(u"Safari"_s)};
    bench.session->submit(u"Quit Safari"_s);
    QVERIFY(bench.waitForPending());
    bench.session.reset();

    AgentSession second(bench.models, bench.desktop.services());
    bench.engine->replies = {done(u"Second."_s)};
    second.submit(u"Second"_s);
    QTRY_VERIFY(!second.isRunning());
    QVERIFY(bench.desktop.journal.lines.isEmpty());
}

void AgentSessionTest::anotherSessionWorksWithTheSameModel()
{
    SessionBench bench;
    AgentSession second(bench.models, bench.desktop.services());
    bench.engine->replies = {done(u"First."_s), done(u"Second."_s)};
    bench.runTask(u"First"_s);
    second.submit(u"Second"_s);
    QTRY_VERIFY(!second.isRunning());
    QCOMPARE(second.turns().constFirst().summary, u"Second."_s);
    QCOMPARE(bench.session->turns().size(), 1);
    QCOMPARE(bench.engine->loadedPaths.size(), 1);
}

QTEST_GUILESS_MAIN(AgentSessionTest)
#include "AgentSessionTest.moc"
