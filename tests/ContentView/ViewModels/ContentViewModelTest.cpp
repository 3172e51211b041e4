// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/ContentViewModel.h"

#include "Agent/SessionBench.h"
#include "Base/PlatformWords.h"
#include "Support/Gate.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

using ModelFile = SessionBench::ModelFile;

namespace {

// The window's view model, over a session with a loaded model.
class WindowBench : public SessionBench
{
public:
    explicit WindowBench(ModelFile file = ModelFile::Present)
        : SessionBench(file), content(models, *session, desktop.services())
    {
        content.appear();
    }

    bool waitUntilLoaded()
    {
        return QTest::qWaitFor([this] { return content.layer() != ContentViewModel::Setup; });
    }

    ContentViewModel content;
};

} // namespace

class ContentViewModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAModelTheSetupShows();
    void theModelIsLoadedWhenTheWindowAppears();
    void theHistoryShowsOnceThereIsATurn();
    void theSetupHidesTheHistoryUntilAnotherModelIsLoaded();

    void theExamplesAreGiven();
    void anExampleFillsTheFieldAndDoesNotStart();
    void sendingTakesTheTextAndClearsTheField();
    void sendingBlankTextClearsTheFieldAndStartsNothing();
    void sendingWithoutAModelKeepsTheText();

    void aRunningTaskChangesTheSymbolAndShowsItsStatus();
    void theReplyShowsWhileItIsWritten();
    void stoppingDeclinesAPendingStep();
    void theConfirmationShowsTheReason();
    void invisibleCharactersAreMarkedEverywhere();
    void aScriptIsShownInItsLines();
    void anAnswerTakesTheConfirmationAway_data();
    void anAnswerTakesTheConfirmationAway();
    void theHistoryIsClearedOnlyBetweenTasks();

    void theFooterOffersTheModelsOnceOneIsLoaded();
    void theModelStaysWhileATaskRuns();
    void withoutTheAccessThereIsABanner();
    void theAccessIsLookedAtWhenTheUserComesBack_data();
    void theAccessIsLookedAtWhenTheUserComesBack();
    void theBannerAsksForTheAccess();
    void anObstacleIsShownFromTheStart();
    void noAccessIsAskedForBehindAnObstacle();
    void summoningPutsTheFocusIntoTheField();

    void stepsQuestionsAndEndsAreAnnounced();
    void aFailedStepIsAnnounced();
    void aSummaryIsAnnouncedWhereTheLastLineDoesNotSayIt();
};

void ContentViewModelTest::withoutAModelTheSetupShows()
{
    WindowBench bench(ModelFile::Missing);
    QCOMPARE(bench.content.layer(), ContentViewModel::Setup);
    QCOMPARE(bench.content.setup()->step(), SetupViewModel::NeedsDownload);
    QVERIFY(!bench.content.canChooseModel());
}

void ContentViewModelTest::theModelIsLoadedWhenTheWindowAppears()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    QCOMPARE(bench.content.layer(), ContentViewModel::Empty);
    QCOMPARE(bench.engine->loadedPaths.size(), 1);
}

void ContentViewModelTest::theHistoryShowsOnceThereIsATurn()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    const QSignalSpy changes(&bench.content, &ContentViewModel::layerChanged);
    bench.engine->replies = {done(u"Done."_s)};
    bench.runTask(u"anything"_s);
    QCOMPARE(bench.content.layer(), ContentViewModel::History);
    QVERIFY(!changes.isEmpty());
    QCOMPARE(bench.content.turns()->rowCount(), 1);
}

void ContentViewModelTest::theSetupHidesTheHistoryUntilAnotherModelIsLoaded()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    bench.engine->replies = {done(u"Done."_s)};
    bench.runTask(u"anything"_s);
    bench.content.selectModel(1);
    QCOMPARE(bench.content.layer(), ContentViewModel::Setup);
    bench.content.selectModel(0);
    QTRY_COMPARE(bench.content.layer(), ContentViewModel::History);
}

void ContentViewModelTest::theExamplesAreGiven()
{
    WindowBench bench;
    const QStringList expected{u"Open Safari and search Google for MacBook Air"_s,
                               u"Open Finder and create a folder called Projects"_s,
                               u"Take a screenshot and save it to Downloads"_s,
                               u"Open my Downloads folder and find the latest PDF"_s};
    QCOMPARE(bench.content.suggestions(), expected);
    QCOMPARE(bench.content.placeholder(), PlatformWords::current().placeholder);
}

void ContentViewModelTest::anExampleFillsTheFieldAndDoesNotStart()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    const QSignalSpy focus(&bench.content, &ContentViewModel::focusRequested);
    bench.content.useSuggestion(2);
    QCOMPARE(bench.content.input(), u"Take a screenshot and save it to Downloads"_s);
    QCOMPARE(focus.size(), 1);
    QVERIFY(!bench.content.isRunning());
    QVERIFY(bench.session->turns().isEmpty());
}

void ContentViewModelTest::sendingTakesTheTextAndClearsTheField()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    bench.engine->replies = {done(u"Done."_s)};
    bench.content.setInput(u"  Open Mail "_s);
    bench.content.send();
    QCOMPARE(bench.content.input(), QString());
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.lastTurn().command, u"Open Mail"_s);
}

void ContentViewModelTest::sendingBlankTextClearsTheFieldAndStartsNothing()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    bench.content.setInput(u"   "_s);
    bench.content.send();
    QCOMPARE(bench.content.input(), QString());
    QVERIFY(bench.session->turns().isEmpty());
}

void ContentViewModelTest::sendingWithoutAModelKeepsTheText()
{
    WindowBench bench(ModelFile::Missing);
    bench.content.setInput(u"Open Mail"_s);
    bench.content.send();
    QCOMPARE(bench.content.input(), u"Open Mail"_s);
    QVERIFY(bench.session->turns().isEmpty());
}

void ContentViewModelTest::aRunningTaskChangesTheSymbolAndShowsItsStatus()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    QCOMPARE(bench.content.leadingSymbol(), u"command"_s);
    Gate gate;
    bench.engine->beforeReply = [&gate] { return gate.passed(); };
    bench.engine->replies = {done(u"Done."_s)};
    bench.content.setInput(u"anything"_s);
    bench.content.send();
    QVERIFY(bench.content.isRunning());
    QCOMPARE(bench.content.leadingSymbol(), u"sparkles"_s);
    QTRY_VERIFY(!bench.content.status().isEmpty());
    gate.open();
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.content.leadingSymbol(), u"command"_s);
    QCOMPARE(bench.content.status(), QString());
}

void ContentViewModelTest::theReplyShowsWhileItIsWritten()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    QStringList seen;
    connect(&bench.content, &ContentViewModel::streamPreviewChanged, this,
            [&] { seen.append(bench.content.streamPreview()); });
    bench.engine->replies = {done(u"Done."_s)};
    bench.runTask(u"anything"_s);
    QVERIFY(seen.contains(done(u"Done."_s)));
}

void ContentViewModelTest::stoppingDeclinesAPendingStep()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    bench.engine->replies = {quitApp(u"Mail"_s)};
    bench.content.setInput(u"quit Mail"_s);
    bench.content.send();
    QVERIFY(bench.waitForPending());
    bench.content.stop();
    QVERIFY(!bench.content.isConfirming());
    QVERIFY(bench.waitForEnd());
    QVERIFY(!bench.desktop.journal.lines.join(u'\n').contains(u"terminate"_s));
}

void ContentViewModelTest::theConfirmationShowsTheReason()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    QCOMPARE(bench.content.confirmationReason(), QString());
    bench.engine->replies = {quitApp(u"Mail"_s)};
    bench.content.setInput(u"quit Mail"_s);
    bench.content.send();
    QVERIFY(bench.waitForPending());
    QVERIFY(bench.content.isConfirming());
    QCOMPARE(bench.content.confirmationReason(), bench.session->pending()->reason);
    QVERIFY(!bench.content.confirmationReason().isEmpty());
}

void ContentViewModelTest::invisibleCharactersAreMarkedEverywhere()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    bench.engine->replies = {quitApp(u"Mail\u202E\u200B\u2028x"_s), done(u"Over\u202E."_s)};
    bench.content.setInput(u"quit\u202E Mail"_s);
    bench.content.send();
    QVERIFY(bench.waitForPending());
    const QString shown = u"Mail⟨U+202E⟩⟨U+200B⟩⟨U+2028⟩x"_s;
    QCOMPARE(bench.content.confirmationReason(), u"Quit %1 — unsaved work could be lost"_s.arg(shown));
    QCOMPARE(bench.content.announcement(), bench.content.confirmationReason());
    QCOMPARE(bench.content.status(), u"Waiting for approval: Closing %1"_s.arg(shown));
    // The action executed has the model's original text.
    QCOMPARE(bench.session->pending()->action.args[u"app"_s], u"Mail\u202E\u200B\u2028x"_s);
    const TurnListModel &turns = *bench.content.turns();
    QCOMPARE(turns.index(0).data(TurnListModel::CommandRole).toString(), u"quit⟨U+202E⟩ Mail"_s);
    const auto *log = turns.index(0).data(TurnListModel::LogRole).value<LogListModel *>();
    QCOMPARE(log->index(0).data(LogListModel::TextRole).toString(), u"Closing "_s + shown);
    bench.content.resolve(true);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.content.announcement(), u"Over⟨U+202E⟩."_s);
}

void ContentViewModelTest::aScriptIsShownInItsLines()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    bench.engine->replies = {uR"({"action":"applescript","script":"beep\n\tquit\u202e"})"_s};
    bench.content.setInput(u"beep"_s);
    bench.content.send();
    QVERIFY(bench.waitForPending());
    QCOMPARE(bench.content.confirmationReason(), u"Run a custom AppleScript:\nbeep\n\tquit⟨U+202E⟩"_s);
}

void ContentViewModelTest::anAnswerTakesTheConfirmationAway_data()
{
    QTest::addColumn<bool>("allowed");
    QTest::newRow("Allow") << true;
    QTest::newRow("Cancel") << false;
}

void ContentViewModelTest::anAnswerTakesTheConfirmationAway()
{
    QFETCH(bool, allowed);
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    bench.engine->replies = {quitApp(u"Mail"_s), done(u"Done."_s)};
    bench.content.setInput(u"quit Mail"_s);
    bench.content.send();
    QVERIFY(bench.waitForPending());
    bench.content.resolve(allowed);
    QVERIFY(!bench.content.isConfirming());
    QVERIFY(bench.waitForEnd());
    // Only an approved step is followed by another reply.
    QCOMPARE(bench.engine->conversations.size(), allowed ? 2 : 1);
}

void ContentViewModelTest::theHistoryIsClearedOnlyBetweenTasks()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    Gate gate;
    bench.engine->beforeReply = [&gate] { return gate.passed(); };
    bench.engine->replies = {done(u"Done."_s)};
    bench.content.setInput(u"anything"_s);
    bench.content.send();
    bench.content.clearHistory();
    QCOMPARE(bench.content.turns()->rowCount(), 1);
    gate.open();
    QVERIFY(bench.waitForEnd());
    bench.content.clearHistory();
    QCOMPARE(bench.content.turns()->rowCount(), 0);
    QCOMPARE(bench.content.layer(), ContentViewModel::Empty);
}

void ContentViewModelTest::theFooterOffersTheModelsOnceOneIsLoaded()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    QVERIFY(bench.content.canChooseModel());
    QCOMPARE(bench.content.modelName(), LocalModel::catalog()[0].name);
    QCOMPARE(bench.content.modelNames().size(), LocalModel::catalog().size());
    bench.content.selectModel(1);
    QCOMPARE(bench.content.modelName(), LocalModel::catalog()[1].name);
    QCOMPARE(bench.content.selectedModel(), 1);
}

void ContentViewModelTest::theModelStaysWhileATaskRuns()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    Gate gate;
    bench.engine->beforeReply = [&gate] { return gate.passed(); };
    bench.engine->replies = {done(u"Done."_s)};
    bench.content.setInput(u"anything"_s);
    bench.content.send();
    bench.content.selectModel(1);
    QCOMPARE(bench.content.selectedModel(), 0);
    gate.open();
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.lastTurn().summary, u"Done."_s);
    bench.content.selectModel(1);
    QCOMPARE(bench.content.selectedModel(), 1);
}

void ContentViewModelTest::withoutTheAccessThereIsABanner()
{
    SessionBench bench;
    bench.desktop.accessibility.trusted = false;
    const ContentViewModel content(bench.models, *bench.session, bench.desktop.services());
    QTRY_VERIFY(!content.trusted());
}

void ContentViewModelTest::theAccessIsLookedAtWhenTheUserComesBack_data()
{
    QTest::addColumn<bool>("summoned");
    QTest::newRow("by the summons") << true;
    QTest::newRow("by switching back") << false;
}

void ContentViewModelTest::theAccessIsLookedAtWhenTheUserComesBack()
{
    QFETCH(bool, summoned);
    SessionBench bench;
    bench.desktop.accessibility.trusted = false;
    ContentViewModel content(bench.models, *bench.session, bench.desktop.services());
    QTRY_VERIFY(!content.trusted());
    bench.desktop.accessibility.trusted = true;
    if (summoned)
        content.summoned();
    else
        content.becameActive();
    QTRY_VERIFY(content.trusted());
}

void ContentViewModelTest::theBannerAsksForTheAccess()
{
    SessionBench bench;
    bench.desktop.accessibility.trusted = false;
    ContentViewModel content(bench.models, *bench.session, bench.desktop.services());
    content.grantAccess();
    QTRY_COMPARE(bench.desktop.accessibility.prompts, 1);
}

void ContentViewModelTest::anObstacleIsShownFromTheStart()
{
    SessionBench bench;
    const ContentViewModel free(bench.models, *bench.session, bench.desktop.services());
    QCOMPARE(free.obstacle(), QString());
    bench.desktop.session.lastingObstacle = u"This desktop is out of reach."_s;
    const ContentViewModel barred(bench.models, *bench.session, bench.desktop.services());
    QCOMPARE(barred.obstacle(), u"This desktop is out of reach."_s);
}

void ContentViewModelTest::noAccessIsAskedForBehindAnObstacle()
{
    SessionBench bench;
    bench.desktop.accessibility.trusted = false;
    bench.desktop.session.lastingObstacle = u"This desktop is out of reach."_s;
    ContentViewModel content(bench.models, *bench.session, bench.desktop.services());
    content.becameActive();
    QVERIFY(content.trusted());
}

void ContentViewModelTest::summoningPutsTheFocusIntoTheField()
{
    WindowBench bench;
    const QSignalSpy focus(&bench.content, &ContentViewModel::focusRequested);
    bench.content.summoned();
    QCOMPARE(focus.size(), 1);
}

void ContentViewModelTest::stepsQuestionsAndEndsAreAnnounced()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    bench.desktop.workspace.start(u"Mail"_s);
    QStringList said;
    connect(&bench.content, &ContentViewModel::announcementChanged, this,
            [&] { said.append(bench.content.announcement()); });
    bench.engine->replies = {quitApp(u"Mail"_s), done(u"All done."_s)};
    bench.content.setInput(u"quit Mail"_s);
    bench.content.send();
    QVERIFY(bench.waitForPending());
    const QString step = bench.session->pending()->action.title();
    const QString question = bench.session->pending()->reason;
    bench.content.resolve(true);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(said, QStringList({step, question, u"All done."_s}));
}

void ContentViewModelTest::aFailedStepIsAnnounced()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    bench.engine->replies = {openApp(u"Nowhere"_s), done(u"Sorry."_s)};
    QStringList said;
    connect(&bench.content, &ContentViewModel::announcementChanged, this,
            [&] { said.append(bench.content.announcement()); });
    bench.runTask(u"open it"_s);
    QCOMPARE(said.size(), 3);
    QCOMPARE(said[1], bench.lastTurn().log[0].text);
    QVERIFY(said[1] != said[0]);
}

void ContentViewModelTest::aSummaryIsAnnouncedWhereTheLastLineDoesNotSayIt()
{
    WindowBench bench;
    QVERIFY(bench.waitUntilLoaded());
    bench.engine->replies = {quitApp(u"Mail"_s)};
    bench.content.setInput(u"quit Mail"_s);
    bench.content.send();
    QVERIFY(bench.waitForPending());
    bench.content.resolve(false);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(bench.content.announcement(), u"I didn't do that, as requested."_s);
}

QTEST_GUILESS_MAIN(ContentViewModelTest)
#include "ContentViewModelTest.moc"
