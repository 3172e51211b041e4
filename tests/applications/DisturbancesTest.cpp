// SPDX-License-Identifier: Apache-2.0
// Actions during other activity on the desktop: other windows, a user typing, the window manager being
// replaced. An action still has its effect or fails with one clear line, and later actions work.
#include "applications/support/DesktopTest.h"
#include "applications/support/X11Screen.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QScopeGuard>
#include <QScreen>
#include <QTimer>

#include <csignal>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

class DisturbancesTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aMinimisedWindow();
    void aWindowOnAnotherWorkspace();
    void twoMonitors();
    void aModalDialogInTheWay();
    void aUserTypesAtTheSameTime();
    void theLayoutChangesWhileTyping();
    void theScreenIsLocked();
    void theScreenIsLockedWhileTyping();
    void anOpenMenuTakesTheKeys();
    void theServerIsSlow();
    void theWindowManagerIsReplaced();
    void theWindowManagerEnds();

private:
    void verifyTyping(const QString &text);

    QString m_path;
};

namespace {

// For errors due within two seconds; generous, for a busy machine.
constexpr std::chrono::seconds bound{10};

// Long enough to be disturbed halfway.
const QString longText =
    u"The quick brown fox jumps over the lazy dog, zwölf Boxkämpfer jagen. "_s.repeated(12);

void runTool(const QString &program, const QStringList &arguments)
{
    QProcess::execute(u"timeout"_s, QStringList{u"20"_s, program} + arguments);
}

QByteArray layoutNames()
{
    QProcess tool;
    tool.start(u"xprop"_s, {u"-root"_s, u"_XKB_RULES_NAMES"_s});
    tool.waitForFinished();
    return tool.readAllStandardOutput();
}

void startLocker(QProcess &locker)
{
    locker.start(u"i3lock"_s, {u"-n"_s, u"-c"_s, u"203040"_s});
}

bool lock(QProcess &locker)
{
    startLocker(locker);
    return QTest::qWaitFor([] { return X11Screen::isKeyboardGrabbed(); }, PrivateDesktop::patience);
}

// Kills the locker, since it would need a password.
void unlock(QProcess &locker)
{
    locker.kill();
    locker.waitForFinished();
    QTRY_VERIFY_WITH_TIMEOUT(!X11Screen::isKeyboardGrabbed(), PrivateDesktop::patience);
}

quint32 editorWindow()
{
    return Screen::windowsOf(u"Mousepad"_s).value(0).identifier;
}

bool isInFront()
{
    return Screen::activeClass() == "Mousepad"_L1;
}

// Calls `action` once the first text has arrived, which Mousepad shows in its title. Destroying the result
// cancels it.
std::unique_ptr<QTimer> onceTypingBegins(std::function<void()> action)
{
    auto timer = std::make_unique<QTimer>();
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [timer = timer.get(), action] {
        if (!Screen::showsTitle(u"*"_s))
            return;
        timer->stop();
        action();
    });
    timer->start(1);
    return timer;
}

bool waitForManager(const QList<qint64> &before)
{
    return QTest::qWaitFor(
        [&before] {
            const QList<qint64> now = PrivateDesktop::processesWith("xfwm4");
            return !now.isEmpty() && now != before && Screen::activeWindow();
        },
        PrivateDesktop::patience);
}

} // namespace

void DisturbancesTest::init()
{
    m_path = PrivateDesktop::home(u"Documents/disturbed.txt"_s);
    PrivateDesktop::write(m_path, "");
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {m_path}, u"Mousepad"_s));
}

// Types the text, saves, and checks that the document contains it.
void DisturbancesTest::verifyTyping(const QString &text)
{
    const Outcome typed = perform("type_text", {{"text", text}});
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
    const Outcome saved = perform("press_key", {{"key", u"s"_s}, {"modifiers", u"command"_s}});
    VERIFY_EFFECT(PrivateDesktop::read(m_path).contains(text.toUtf8()), saved);
}

void DisturbancesTest::aMinimisedWindow()
{
    runTool(u"xdotool"_s, {u"windowminimize"_s, QString::number(editorWindow())});
    QVERIFY(QTest::qWaitFor([] { return !isInFront(); }, PrivateDesktop::patience));
    const Outcome opened = perform("open_app", {{"app", u"Mousepad"_s}});
    VERIFY_EFFECT(isInFront(), opened);
    verifyTyping(u"back again"_s);
}

void DisturbancesTest::aWindowOnAnotherWorkspace()
{
    runTool(u"xdotool"_s, {u"set_desktop_for_window"_s, QString::number(editorWindow()), u"1"_s});
    QVERIFY(QTest::qWaitFor([] { return !isInFront(); }, PrivateDesktop::patience));
    const Outcome opened = perform("open_app", {{"app", u"Mousepad"_s}});
    VERIFY_EFFECT(isInFront(), opened);
    verifyTyping(u"from over there"_s);
}

void DisturbancesTest::twoMonitors()
{
    const QSize whole = QGuiApplication::primaryScreen()->virtualSize();
    const int half = whole.width() / 2;
    const auto monitor = [&](const QString &name, int left) {
        runTool(u"xrandr"_s,
                {u"--setmonitor"_s, name, u"%1/200x%2/200+%3+0"_s.arg(half).arg(whole.height()).arg(left),
                 left == 0 ? u"screen"_s : u"none"_s});
    };
    const auto removal = qScopeGuard([] {
        for (const QString &name : {u"left"_s, u"right"_s})
            runTool(u"xrandr"_s, {u"--delmonitor"_s, name});
    });
    monitor(u"left"_s, 0);
    monitor(u"right"_s, half);
    runTool(u"xdotool"_s,
            {u"windowmove"_s, QString::number(editorWindow()), QString::number(half + 40), u"40"_s});
    verifyTyping(u"on the right"_s);
    const Outcome shot = perform("screenshot", {{"save_to", u"Pictures"_s}});
    QVERIFY2(!shot.hasFailed, qPrintable(shot.line));
    const QString path = shot.line.section(u"Saved screenshot to "_s, 1).chopped(1);
    QCOMPARE(QImage(path).size(), whole);
}

void DisturbancesTest::aModalDialogInTheWay()
{
    Screen::pressKey(u"ctrl+o"_s);
    QVERIFY(QTest::qWaitFor([] { return Screen::windowsOf(u"Mousepad"_s).size() == 2; },
                            PrivateDesktop::patience));
    const Outcome cancelled = perform("click", {{"label", u"Cancel"_s}});
    VERIFY_EFFECT(Screen::windowsOf(u"Mousepad"_s).size() == 1, cancelled);
    QVERIFY(QTest::qWaitFor(&isInFront, PrivateDesktop::patience));
    verifyTyping(u"after the dialog"_s);
}

void DisturbancesTest::aUserTypesAtTheSameTime()
{
    QProcess user;
    const auto watch = onceTypingBegins([&user] {
        user.start(u"xdotool"_s, {u"type"_s, u"--delay"_s, u"15"_s, u"77777777777777777777"_s});
    });
    const Outcome typed = perform("type_text", {{"text", longText}});
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
    QVERIFY(user.state() == QProcess::NotRunning || user.waitForFinished());
    Screen::pressKey(u"ctrl+s"_s);
    const auto savedWithoutTheUsers = [this] {
        return QString::fromUtf8(PrivateDesktop::read(m_path)).remove(u'7').trimmed();
    };
    VERIFY_EFFECT(savedWithoutTheUsers() == longText.trimmed(), typed);
    QCOMPARE(PrivateDesktop::read(m_path).count('7'), 20);
}

void DisturbancesTest::theLayoutChangesWhileTyping()
{
    QProcess change;
    const auto watch = onceTypingBegins([&change] { change.start(u"setxkbmap"_s, {u"de"_s}); });
    const Outcome typed = perform("type_text", {{"text", longText}});
    QVERIFY(change.state() == QProcess::NotRunning || change.waitForFinished());
    const QByteArray layout = layoutNames();
    runTool(u"setxkbmap"_s, {u"us"_s});
    QCOMPARE(typed.line, u"The keyboard layout changed, so typing was stopped."_s);
    QVERIFY2(layout.contains("\"de\""), layout.constData());
    verifyTyping(u"the same again"_s);
}

void DisturbancesTest::theScreenIsLocked()
{
    QProcess locker;
    QVERIFY(lock(locker));
    for (const char *action : {"open_app", "quit_app", "type_text", "press_key", "click", "read_ui",
                               "list_windows", "screenshot", "find_files", "create_folder"}) {
        const Outcome refused = perform(action, {{"app", u"Mousepad"_s},
                                                 {"text", u"secret"_s},
                                                 {"key", u"a"_s},
                                                 {"label", u"Save"_s},
                                                 {"save_to", u"Music"_s},
                                                 {"name", u"New"_s},
                                                 {"in", u"Music"_s}});
        QVERIFY(refused.hasFailed);
        QCOMPARE(refused.line, u"The screen is locked."_s);
        QVERIFY2(refused.duration < bound, qPrintable(u"%1 ms"_s.arg(refused.duration.count())));
    }
    QVERIFY(QDir(PrivateDesktop::home(u"Music"_s)).isEmpty());
    unlock(locker);
    verifyTyping(u"after the lock"_s);
}

void DisturbancesTest::theScreenIsLockedWhileTyping()
{
    QProcess locker;
    const auto watch = onceTypingBegins([&locker] { startLocker(locker); });
    const Outcome typed = perform("type_text", {{"text", longText}});
    QVERIFY(typed.hasFailed);
    QCOMPARE(typed.line,
             u"Another program, or the locked screen, has taken over the keyboard, so typing was stopped."_s);
    unlock(locker);
    verifyTyping(u"after the lock"_s);
}

// The menu's application grabs the keyboard.
void DisturbancesTest::anOpenMenuTakesTheKeys()
{
    Screen::pressKey(u"alt+f"_s);
    QVERIFY(QTest::qWaitFor([] { return X11Screen::isKeyboardGrabbed(); }, PrivateDesktop::patience));
    const Outcome closed = perform("press_key", {{"key", u"escape"_s}});
    QVERIFY2(!closed.hasFailed, qPrintable(closed.line));
    QVERIFY(QTest::qWaitFor([] { return !X11Screen::isKeyboardGrabbed(); }, PrivateDesktop::patience));
    verifyTyping(u"the menu is closed"_s);
}

void DisturbancesTest::theServerIsSlow()
{
    const QList<qint64> servers = PrivateDesktop::processesWith("Xvfb");
    QVERIFY(!servers.isEmpty());
    const auto signalServer = [&servers](int number) { ::kill(static_cast<pid_t>(servers.first()), number); };
    QTimer rhythm;
    bool isStopped = false;
    rhythm.callOnTimeout(this, [&] {
        isStopped = !isStopped;
        signalServer(isStopped ? SIGSTOP : SIGCONT);
    });
    rhythm.start(150);
    const Outcome typed = perform("type_text", {{"text", longText}});
    const Outcome read = perform("read_ui");
    rhythm.stop();
    signalServer(SIGCONT);
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
    QVERIFY2(!read.hasFailed, qPrintable(read.line));
    Screen::pressKey(u"ctrl+s"_s);
    VERIFY_EFFECT(QString::fromUtf8(PrivateDesktop::read(m_path)).trimmed() == longText.trimmed(), typed);
}

void DisturbancesTest::theWindowManagerIsReplaced()
{
    const QList<qint64> before = PrivateDesktop::processesWith("xfwm4");
    PrivateDesktop::start(u"xfwm4"_s, {u"--replace"_s});
    QVERIFY(waitForManager(before));
    const Outcome opened = perform("open_app", {{"app", u"Mousepad"_s}});
    VERIFY_EFFECT(isInFront(), opened);
    verifyTyping(u"under a new manager"_s);
}

// Last: the session may not survive without a window manager.
void DisturbancesTest::theWindowManagerEnds()
{
    const QList<qint64> before = PrivateDesktop::processesWith("xfwm4");
    for (const qint64 manager : before)
        ::kill(static_cast<pid_t>(manager), SIGKILL);
    // Wait until the server has destroyed the manager's frames: only then is the focus settled.
    QTRY_VERIFY_WITH_TIMEOUT(PrivateDesktop::processesWith("xfwm4").isEmpty(), PrivateDesktop::patience);
    const quint32 window = editorWindow();
    QTRY_VERIFY_WITH_TIMEOUT(!X11Screen::hasFrame(window), PrivateDesktop::patience);
    // The window may have kept the focus, or lost it with its frame.
    const Outcome front = perform("open_app", {{"app", u"Mousepad"_s}});
    const QString reason = u"No window manager is running to bring “"_s;
    QVERIFY2(!front.hasFailed || front.line.startsWith(reason), qPrintable(front.line));
    QVERIFY2(!front.hasFailed || isOneClearLine(front.line), qPrintable(front.line));
    QVERIFY2(front.duration < bound, qPrintable(u"%1 ms"_s.arg(front.duration.count())));
    const Outcome typed = perform("type_text", {{"text", u"lost?"_s}});
    QCOMPARE(typed.hasFailed, front.hasFailed);
    QVERIFY2(!typed.hasFailed || isOneClearLine(typed.line), qPrintable(typed.line));
    PrivateDesktop::start(u"xfwm4"_s);
    QVERIFY(waitForManager(before));
    const Outcome opened = perform("open_app", {{"app", u"Mousepad"_s}});
    VERIFY_EFFECT(isInFront(), opened);
    verifyTyping(u"under a new manager"_s);
}

QTEST_MAIN(DisturbancesTest)
#include "DisturbancesTest.moc"
