// SPDX-License-Identifier: Apache-2.0
// What differs in a session with sway from X11: with a locked screen, and what the doctor
// says. All else is tested by the tests that run on both.
#include "applications/support/DesktopTest.h"
#include "applications/support/Doctor.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTimer>

using namespace Qt::StringLiterals;

class SwayTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void theScreenIsLocked();
    void theScreenIsLockedWhileTyping();
    void theLockerOfAnotherDesktopLocksNothing();
    void theDoctorNamesTheWays();

private:
    // Opens an empty document in an editor, with the focus.
    [[nodiscard]] bool openEditor();
    void verifyTyping();

    QString m_path = PrivateDesktop::home(u"Documents/letter.txt"_s);
};

namespace {

void startLocker(QProcess &locker)
{
    locker.start(u"swaylock"_s, {u"--color"_s, u"112233"_s});
}

bool waitForLock()
{
    return QTest::qWaitFor([] { return !Screen::activeWindow(); }, PrivateDesktop::patience);
}

// Kills the locker, since it would need a password; its helper ends by itself. sway gives no window the focus
// if the locker ends before it has shown itself.
void unlock(QProcess &locker)
{
    locker.kill();
    QVERIFY(locker.waitForFinished());
    const auto isGone = [] { return PrivateDesktop::processesWith("swaylock").isEmpty(); };
    QVERIFY(QTest::qWaitFor(isGone, PrivateDesktop::patience));
    Screen::requestFocus(Screen::windows().constFirst().identifier);
    QVERIFY(QTest::qWaitFor([] { return Screen::activeWindow().has_value(); }, PrivateDesktop::patience));
}

} // namespace

bool SwayTest::openEditor()
{
    PrivateDesktop::write(m_path, "");
    return PrivateDesktop::open(u"mousepad"_s, {m_path}, u"Mousepad"_s) &&
           QTest::qWaitFor([] { return Screen::showsTitle(u"letter.txt"_s); }, PrivateDesktop::patience);
}

void SwayTest::verifyTyping()
{
    const Outcome typed = perform("type_text", {{"text", u"after the lock"_s}});
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
    const Outcome saved = perform("press_key", {{"key", u"s"_s}, {"modifiers", u"command"_s}});
    VERIFY_EFFECT(PrivateDesktop::read(m_path).contains("after the lock"), saved);
}

void SwayTest::theScreenIsLocked()
{
    QVERIFY(openEditor());
    QProcess locker;
    startLocker(locker);
    QVERIFY2(waitForLock(), qPrintable(Screen::described()));
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
    }
    QVERIFY(QDir(PrivateDesktop::home(u"Music"_s)).isEmpty());
    unlock(locker);
    verifyTyping();
}

void SwayTest::theScreenIsLockedWhileTyping()
{
    QVERIFY(openEditor());
    QProcess locker;
    QTimer typing; // which Mousepad shows in its title
    typing.callOnTimeout(this, [&] {
        if (!Screen::showsTitle(u"*"_s))
            return;
        typing.stop();
        startLocker(locker);
    });
    typing.start(1);
    const Outcome typed = perform("type_text", {{"text", u"The quick brown fox "_s.repeated(150)}});
    QVERIFY(typed.hasFailed);
    QVERIFY2(typed.line.endsWith(u"lost the keyboard focus, so typing was stopped."_s),
             qPrintable(typed.line));
    unlock(locker);
    verifyTyping();
}

void SwayTest::theLockerOfAnotherDesktopLocksNothing()
{
    const QString program = PrivateDesktop::home(u"swaylock"_s);
    QVERIFY(QFile::copy(u"/usr/bin/sleep"_s, program));
    QProcess locker;
    const auto linesWithLocker = [&](const QStringList &environment) {
        locker.start(u"env"_s, environment + QStringList{program, u"1000"_s});
        // Then it is no longer env.
        const auto isRunning = [&] {
            return PrivateDesktop::read(u"/proc/%1/comm"_s.arg(locker.processId())) == "swaylock\n";
        };
        const QString line =
            QTest::qWaitFor(isRunning, PrivateDesktop::patience) ? perform("list_windows").line : QString();
        locker.kill();
        locker.waitForFinished();
        return line;
    };
    QCOMPARE(linesWithLocker({u"WAYLAND_DISPLAY=wayland-elsewhere"_s}), u"none"_s);
    QCOMPARE(linesWithLocker({u"-i"_s}), u"none"_s);
    QCOMPARE(linesWithLocker({}), u"The screen is locked."_s);
    QCOMPARE(perform("list_windows").line, u"none"_s);
}

void SwayTest::theDoctorNamesTheWays()
{
    const Doctor::Report report = Doctor::consult();
    for (const QString &check :
         {u"session"_s, u"windows"_s, u"keyboard"_s, u"screenshot"_s, u"accessibility"_s})
        QVERIFY2(report.state(check) == "works"_L1, qPrintable(report.text));
    QCOMPARE(report.state(u"hot-key"_s), u"limited"_s);
    QVERIFY(report.advice(u"hot-key"_s).contains("orvane --toggle"_L1));
}

QTEST_MAIN(SwayTest)
#include "SwayTest.moc"
