// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/Application/OrvaneApp.h"

#include "Agent/SessionBench.h"
#include "Base/PlatformWords.h"
#include "Desktop/Recording/RecordingShell.h"
#include "Support/Gate.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

using StartUp = AppDelegate::StartUp;

namespace {

constexpr std::uint16_t spaceBar = 49;

// Journal entries about the program's activity.
const QString atWork = u"at work: A task or a download is running."_s;
const QString atRest = u"at rest"_s;

// The whole application with its real window, on a scripted model and a recording desktop.
class ApplicationBench : public SessionBench
{
public:
    explicit ApplicationBench(StartUp startUp = StartUp::Shown) { start(startUp); }
    explicit ApplicationBench(ModelFile file) : SessionBench(file) { start(StartUp::Shown); }
    explicit ApplicationBench(const std::function<void(RecordingShell &)> &prepare)
    {
        prepare(shell);
        start(StartUp::Shown);
    }

    bool isShown() const { return window && window->isVisible(); }
    bool isActive() const { return window && QGuiApplication::focusWindow() == window; }
    bool waitUntilActive()
    {
        return QTest::qWaitFor([this] { return isActive(); });
    }
    bool waitUntilLoaded()
    {
        return QTest::qWaitFor([this] { return models.state().kind == ModelManager::State::Kind::Loaded; });
    }
    // The key press is handled on a later event loop iteration.
    bool pressHotKey() { return shell.hotKeys.press(spaceBar, HotKeyModifier::Option); }
    QStringList work() const
    {
        QStringList lines = shell.journal.lines;
        lines.removeIf([](const QString &line) { return !line.startsWith(u"at "_s); });
        return lines;
    }
    QQuickItem *focusItem() const { return window->activeFocusItem(); }

    RecordingShell shell;
    std::optional<std::chrono::milliseconds> patience; // with an idle model
    std::unique_ptr<OrvaneApp> application;
    QQuickWindow *window = nullptr;

private:
    void start(StartUp startUp)
    {
        application = std::make_unique<OrvaneApp>(models, desktop.services(), shell.services(),
                                                  shell.programInstance, [this] { return patience; });
        application->start(startUp);
        window = qobject_cast<QQuickWindow *>(shell.windowStyler.styled.value(0));
    }
};

// Switches to another application: no window of the program has the focus, and its own stays visible.
bool leaveTheApplication()
{
    {
        QWindow passing;
        passing.show();
        passing.requestActivate();
        if (!QTest::qWaitFor([&passing] { return QGuiApplication::focusWindow() == &passing; }))
            return false;
    }
    return QGuiApplication::focusWindow() == nullptr;
}

} // namespace

class OrvaneAppTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowHasItsSizeAndStyle();
    void theHotKeyIsOptionSpace();
    void withoutAHotKeyTheWindowComesAllTheSame();
    void theFirstWindowComesForwardWithTheTokenOfTheStart();
    void inTheBackgroundNothingShows();
    void inTheBackgroundNoModelIsLoadedBeforeTheWindowIsShown();

    void theHotKeyHidesAWindowThatTheUserIsIn();
    void theHotKeyHidesTheApplicationWhereThatCanBe();
    void theHotKeyBringsAHiddenWindowBack();
    void theHotKeyBringsTheWindowOverAnotherOne();
    void aSummonsPutsTheFocusIntoTheField();
    void closingHidesTheWindowAndTheProcessStays();
    void anotherStartBringsTheWindowBack();
    void anotherStartDoesNotHideTheWindow();
    void aToggleDoesWhatTheHotKeyDoes();

    void lightAndDarkFollowTheDesktop();
    void translucencyFollowsTheCompositor();
    void theHistoryIsClearedByItsShortcut();
    void theHistoryIsClearedFromTheMenuBar();
    void theShortcutLeavesTheHistoryOfARunningTask();
    void thereIsNoSecondWindow();
    void theQuitShortcutEndsTheProgram_data();
    void theQuitShortcutEndsTheProgram();
    void theDesktopsRequestToQuitEndsTheProgram();
    void theContentKeepsClearOfTheDesktopsTitleBar();
    void theDesktopKnowsWhileATaskRuns();
    void theDesktopKnowsWhileADownloadRuns();
    void theDesktopIsToldOnceOfATaskDuringADownload();
    void theWorkEndsWithTheApplication();
    void anIdleModelIsReleasedAndComesBack();
    void aModelAtWorkIsKept();
};

void OrvaneAppTest::theWindowHasItsSizeAndStyle()
{
    const ApplicationBench bench;
    QVERIFY(bench.window);
    QCOMPARE(bench.window->size(), QSize(720, 620));
    QCOMPARE(bench.window->minimumSize(), QSize(640, 460));
    QCOMPARE(bench.window->title(), u"Orvane"_s);
    QVERIFY(bench.window->flags().testFlag(Qt::FramelessWindowHint));
}

void OrvaneAppTest::theHotKeyIsOptionSpace()
{
    const ApplicationBench bench;
    const QList<RecordingHotKeys::HotKey> keys = bench.shell.hotKeys.registered();
    QCOMPARE(keys.size(), 1);
    QCOMPARE(keys[0].virtualKey, 49);
    QCOMPARE(keys[0].modifiers.toInt(), 2048U);
    QCOMPARE(keys[0].identifier.signature, 0x4F52564EU); // "ORVN"
    QCOMPARE(keys[0].identifier.number, 1U);
}

void OrvaneAppTest::withoutAHotKeyTheWindowComesAllTheSame()
{
    const ApplicationBench bench([](RecordingShell &shell) { shell.hotKeys.isOwnedByAnother = true; });
    QVERIFY(bench.shell.hotKeys.registered().isEmpty());
    QVERIFY(bench.isShown());
}

void OrvaneAppTest::theFirstWindowComesForwardWithTheTokenOfTheStart()
{
    const ApplicationBench bench([](RecordingShell &shell) { shell.programInstance.token = u"token"_s; });
    QCOMPARE(bench.shell.windowStyler.tokens, QStringList{u"token"_s});
    QVERIFY(bench.isShown());
}

void OrvaneAppTest::inTheBackgroundNothingShows()
{
    ApplicationBench bench(StartUp::Hidden);
    QVERIFY(!bench.isShown());
    QCOMPARE(bench.shell.windowStyler.broughtForward.size(), 0);
    QVERIFY(bench.pressHotKey());
    QTRY_VERIFY(bench.isShown());
}

void OrvaneAppTest::inTheBackgroundNoModelIsLoadedBeforeTheWindowIsShown()
{
    ApplicationBench bench(StartUp::Hidden);
    QCoreApplication::processEvents();
    QCOMPARE(bench.engine->loadedPaths.size(), 0);
    QVERIFY(bench.pressHotKey());
    QVERIFY(bench.waitUntilLoaded());
    bench.window->close();
    QVERIFY(bench.pressHotKey());
    QTRY_VERIFY(bench.isShown());
    QCoreApplication::processEvents();
    QCOMPARE(bench.engine->loadedPaths.size(), 1);
}

void OrvaneAppTest::theHotKeyHidesAWindowThatTheUserIsIn()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilActive());
    QVERIFY(bench.pressHotKey());
    QTRY_VERIFY(!bench.isShown());
}

void OrvaneAppTest::theHotKeyHidesTheApplicationWhereThatCanBe()
{
    ApplicationBench bench([](RecordingShell &shell) { shell.windowStyler.canHideApplication = true; });
    QVERIFY(bench.waitUntilActive());
    QVERIFY(bench.pressHotKey());
    QTRY_COMPARE(bench.shell.journal.lines.constLast(), u"hide the application"_s);
    QVERIFY(bench.isShown());
}

void OrvaneAppTest::theHotKeyBringsAHiddenWindowBack()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilActive());
    QVERIFY(bench.pressHotKey());
    QTRY_VERIFY(!bench.isShown());
    QVERIFY(bench.pressHotKey());
    QTRY_COMPARE(bench.shell.windowStyler.broughtForward.size(), 2);
    QVERIFY(bench.isShown());
    QVERIFY(bench.waitUntilActive());
}

void OrvaneAppTest::theHotKeyBringsTheWindowOverAnotherOne()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilActive());
    QVERIFY(leaveTheApplication());
    QVERIFY(bench.isShown());
    QVERIFY(bench.pressHotKey());
    QTRY_COMPARE(bench.shell.windowStyler.broughtForward.size(), 2);
    QVERIFY(bench.isShown());
    QVERIFY(bench.waitUntilActive());
}

void OrvaneAppTest::aSummonsPutsTheFocusIntoTheField()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilLoaded());
    QVERIFY(bench.waitUntilActive());
    QTest::keyClick(bench.window, Qt::Key_Tab);
    QVERIFY(bench.focusItem() && bench.focusItem()->property("placeholderText").isNull());
    QVERIFY(leaveTheApplication());
    QVERIFY(bench.pressHotKey());
    QVERIFY(bench.waitUntilActive());
    QTRY_COMPARE(bench.focusItem()->property("placeholderText").toString(),
                 PlatformWords::current().placeholder);
}

void OrvaneAppTest::closingHidesTheWindowAndTheProcessStays()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilActive());
    QVERIFY(!QGuiApplication::quitOnLastWindowClosed());
    bench.window->close();
    QVERIFY(!bench.isShown());
    QVERIFY(bench.pressHotKey());
    QTRY_VERIFY(bench.isShown());
}

void OrvaneAppTest::anotherStartBringsTheWindowBack()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilActive());
    bench.window->close();
    Q_EMIT bench.shell.programInstance.activated(u"second"_s);
    QVERIFY(bench.waitUntilActive());
    QCOMPARE(bench.shell.windowStyler.tokens.constLast(), u"second"_s);
}

void OrvaneAppTest::anotherStartDoesNotHideTheWindow()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilActive());
    Q_EMIT bench.shell.programInstance.activated(QString());
    QVERIFY(bench.isShown());
}

void OrvaneAppTest::aToggleDoesWhatTheHotKeyDoes()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilActive());
    Q_EMIT bench.shell.programInstance.toggleRequested(QString());
    QVERIFY(!bench.isShown());
    Q_EMIT bench.shell.programInstance.toggleRequested(u"key"_s);
    QVERIFY(bench.waitUntilActive());
    QCOMPARE(bench.shell.windowStyler.tokens.constLast(), u"key"_s);
}

void OrvaneAppTest::lightAndDarkFollowTheDesktop()
{
    ApplicationBench bench([](RecordingShell &shell) { shell.appearance.setDark(true); });
    QCOMPARE(bench.window->property("dark").toBool(), true);
    bench.shell.appearance.setDark(false);
    QCOMPARE(bench.window->property("dark").toBool(), false);
}

void OrvaneAppTest::translucencyFollowsTheCompositor()
{
    ApplicationBench bench;
    QCOMPARE(bench.window->property("translucent").toBool(), false);
    QCOMPARE(bench.window->color().alpha(), 255);
    bench.shell.windowStyler.setCompositing(true);
    QCOMPARE(bench.window->property("translucent").toBool(), true);
    QCOMPARE(bench.window->color().alpha(), 0);
}

void OrvaneAppTest::theHistoryIsClearedByItsShortcut()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilActive());
    bench.engine->replies = {done(u"Done."_s)};
    bench.application->session().submit(u"anything"_s);
    QTRY_VERIFY(!bench.application->session().isRunning());
    QCOMPARE(bench.application->session().turns().size(), 1);
    QTest::keyClick(bench.window, Qt::Key_K, Qt::ControlModifier);
    QVERIFY(bench.application->session().turns().isEmpty());
}

void OrvaneAppTest::theHistoryIsClearedFromTheMenuBar()
{
    ApplicationBench bench;
    bench.engine->replies = {done(u"Done."_s)};
    AgentSession &session = bench.application->session();
    session.submit(u"anything"_s);
    QTRY_VERIFY(!session.isRunning());
    QCOMPARE(session.turns().size(), 1);
    Q_EMIT bench.shell.menuBar.clearHistoryChosen();
    QVERIFY(session.turns().isEmpty());
}

void OrvaneAppTest::theShortcutLeavesTheHistoryOfARunningTask()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilActive());
    Gate gate;
    bench.engine->beforeReply = [&gate] { return gate.passed(); };
    bench.engine->replies = {done(u"Done."_s)};
    AgentSession &session = bench.application->session();
    session.submit(u"anything"_s);
    QTest::keyClick(bench.window, Qt::Key_K, Qt::ControlModifier);
    QCOMPARE(session.turns().size(), 1);
    gate.open();
    QTRY_VERIFY(!session.isRunning());
}

void OrvaneAppTest::thereIsNoSecondWindow()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilActive());
    const qsizetype windows = QGuiApplication::topLevelWindows().size();
    QTest::keyClick(bench.window, Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::topLevelWindows().size(), windows);
}

void OrvaneAppTest::theQuitShortcutEndsTheProgram_data()
{
    QTest::addColumn<bool>("running");
    QTest::newRow("idle") << false;
    QTest::newRow("while a task runs") << true;
}

void OrvaneAppTest::theQuitShortcutEndsTheProgram()
{
    QFETCH(bool, running);
    ApplicationBench bench;
    QVERIFY(bench.waitUntilActive());
    Gate gate;
    bench.engine->beforeReply = [&gate] { return gate.passed(); };
    if (running)
        bench.application->session().submit(u"anything"_s);
    QTimer::singleShot(0, bench.window,
                       [&bench] { QTest::keyClick(bench.window, Qt::Key_Q, Qt::ControlModifier); });
    QCOMPARE(QCoreApplication::exec(), 0);
    bench.application.reset();
}

void OrvaneAppTest::theDesktopsRequestToQuitEndsTheProgram()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilActive());
    QTimer::singleShot(0, qApp, [] {
        QEvent request(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &request);
        QVERIFY(request.isAccepted());
    });
    QCOMPARE(QCoreApplication::exec(), 0);
}

void OrvaneAppTest::theContentKeepsClearOfTheDesktopsTitleBar()
{
    const ApplicationBench bench([](RecordingShell &shell) { shell.windowStyler.titleBar = 28; });
    QCOMPARE(bench.window->property("titleBarHeight").toInt(), 28);
}

void OrvaneAppTest::theDesktopKnowsWhileATaskRuns()
{
    ApplicationBench bench;
    QCOMPARE(bench.work(), QStringList());
    Gate gate;
    bench.engine->beforeReply = [&gate] { return gate.passed(); };
    bench.engine->replies = {done(u"Done."_s)};
    bench.application->session().submit(u"anything"_s);
    QCOMPARE(bench.work(), QStringList{atWork});
    gate.open();
    QTRY_COMPARE(bench.work(), (QStringList{atWork, atRest}));
    QVERIFY(!bench.application->session().isRunning());
}

void OrvaneAppTest::theDesktopKnowsWhileADownloadRuns()
{
    ApplicationBench bench(SessionBench::ModelFile::Missing);
    QCOMPARE(bench.work(), QStringList());
    bench.models.download();
    QCOMPARE(bench.work(), QStringList{atWork});
    bench.models.cancelDownload();
    QCOMPARE(bench.work(), (QStringList{atWork, atRest}));
}

void OrvaneAppTest::theDesktopIsToldOnceOfATaskDuringADownload()
{
    ApplicationBench bench(SessionBench::ModelFile::Missing);
    bench.models.download();
    bench.application->session().submit(u"anything"_s);
    QTRY_VERIFY(!bench.application->session().isRunning());
    QCOMPARE(bench.work(), QStringList{atWork});
}

void OrvaneAppTest::theWorkEndsWithTheApplication()
{
    ApplicationBench bench(SessionBench::ModelFile::Missing);
    bench.models.download();
    bench.application.reset();
    QCOMPARE(bench.work(), (QStringList{atWork, atRest}));
}

void OrvaneAppTest::anIdleModelIsReleasedAndComesBack()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilLoaded());
    bench.engine->replies = {done(u"Done."_s), done(u"Done again."_s)};
    AgentSession &session = bench.application->session();
    bench.patience = std::chrono::milliseconds(1);
    session.submit(u"anything"_s);
    QTRY_VERIFY(!session.isRunning());
    QTRY_COMPARE(bench.engine->unloadCount, 1);
    session.submit(u"anything else"_s);
    QTRY_VERIFY(!session.isRunning());
    QCOMPARE(session.turns().constLast().summary, u"Done again."_s);
    QCOMPARE(bench.engine->loadedPaths.size(), 2);
}

void OrvaneAppTest::aModelAtWorkIsKept()
{
    ApplicationBench bench;
    QVERIFY(bench.waitUntilLoaded());
    Gate gate;
    bench.engine->beforeReply = [&gate] { return gate.passed(); };
    bench.engine->replies = {done(u"Done."_s)};
    AgentSession &session = bench.application->session();
    bench.patience = std::chrono::milliseconds(1);
    session.submit(u"anything"_s);
    QTRY_COMPARE(bench.engine->conversations.size(), 1);
    QTest::qWait(20); // long enough for a timer that ignores the task
    QCOMPARE(bench.engine->unloadCount, 0);
    gate.open();
    QTRY_COMPARE(bench.engine->unloadCount, 1);
}

QTEST_MAIN(OrvaneAppTest)
#include "OrvaneAppTest.moc"
