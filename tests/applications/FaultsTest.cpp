// SPDX-License-Identifier: Apache-2.0
// Faults in other programs cause one clear error line within bounded time, and the next action works.
#include "applications/support/DesktopTest.h"

#include <QTimer>

#include <csignal>

using namespace Qt::StringLiterals;

class FaultsTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void anApplicationThatHangs_data();
    void anApplicationThatHangs();
    void anApplicationThatHangsIsStillAskedToQuit();
    void aWindowThatVanishesWhileItIsRead_data();
    void aWindowThatVanishesWhileItIsRead();
    void theAccessibilityBusGoesAway();
    void theSessionBusGoesAway();

private:
    void verifyThatAnotherApplicationWorks();
    void verifyOneClearLine(const Outcome &outcome);
};

namespace {

// Well above all internal timeouts.
constexpr std::chrono::seconds bound{30};

void killAll(const QList<qint64> &processes)
{
    for (const qint64 process : processes)
        ::kill(static_cast<pid_t>(process), SIGKILL);
}

} // namespace

// The action succeeded, or failed with one clear line.
void FaultsTest::verifyOneClearLine(const Outcome &outcome)
{
    QVERIFY2(!outcome.line.isEmpty() && (!outcome.hasFailed || isOneClearLine(outcome.line)),
             qPrintable(outcome.line));
    QVERIFY2(outcome.duration < bound, qPrintable(u"%1 ms"_s.arg(outcome.duration.count())));
}

void FaultsTest::verifyThatAnotherApplicationWorks()
{
    const QString path = PrivateDesktop::home(u"Documents/after.txt"_s);
    PrivateDesktop::write(path, "");
    QVERIFY(PrivateDesktop::open(u"featherpad"_s, {path}, u"FeatherPad"_s));
    QVERIFY(QTest::qWaitFor([] { return Screen::showsTitle(u"after.txt"_s); }, PrivateDesktop::patience));
    const Outcome focused = perform("open_app", {{"app", u"FeatherPad"_s}});
    QVERIFY2(!focused.hasFailed, qPrintable(focused.line));
    const Outcome typed = perform("type_text", {{"text", u"it works"_s}});
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
    const Outcome saved = perform("click", {{"label", u"Save"_s}});
    VERIFY_EFFECT(PrivateDesktop::read(path).startsWith("it works"), saved);
}

void FaultsTest::anApplicationThatHangs_data()
{
    QTest::addColumn<bool>("reads");
    QTest::newRow("while its controls are read") << true;
    QTest::newRow("while one of its controls is pressed") << false;
}

void FaultsTest::anApplicationThatHangs()
{
    QFETCH(bool, reads);
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QVERIFY(PrivateDesktop::freezeApplication(u"Mousepad"_s));
    const Outcome outcome = reads ? perform("read_ui") : perform("click", {{"label", u"Save"_s}});
    QVERIFY2(outcome.hasFailed && isOneClearLine(outcome.line), qPrintable(outcome.line));
    QVERIFY2(outcome.duration < bound, qPrintable(u"%1 ms"_s.arg(outcome.duration.count())));
    verifyThatAnotherApplicationWorks();
}

void FaultsTest::anApplicationThatHangsIsStillAskedToQuit()
{
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QVERIFY(PrivateDesktop::freezeApplication(u"Mousepad"_s));
    const Outcome outcome = perform("quit_app", {{"app", u"Mousepad"_s}});
    QCOMPARE(outcome.line, u"Asked Mousepad to quit (it may be waiting on a save prompt)."_s);
    QVERIFY2(outcome.duration < bound, qPrintable(u"%1 ms"_s.arg(outcome.duration.count())));
    QVERIFY(Screen::shows(u"Mousepad"_s));
    PrivateDesktop::thawApplication(u"Mousepad"_s);
    VERIFY_EFFECT(!Screen::shows(u"Mousepad"_s), outcome);
}

void FaultsTest::aWindowThatVanishesWhileItIsRead_data()
{
    QTest::addColumn<bool>("reads");
    QTest::addColumn<int>("milliseconds");
    for (const int milliseconds : {0, 1, 3, 10, 30}) {
        QTest::addRow("read, after %d ms", milliseconds) << true << milliseconds;
        QTest::addRow("pressed, after %d ms", milliseconds) << false << milliseconds;
    }
}

void FaultsTest::aWindowThatVanishesWhileItIsRead()
{
    QFETCH(bool, reads);
    QFETCH(int, milliseconds);
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    const qint64 process = Screen::windowsOf(u"Mousepad"_s).first().process;
    QTimer::singleShot(milliseconds, this, [process] { ::kill(static_cast<pid_t>(process), SIGKILL); });
    verifyOneClearLine(reads ? perform("read_ui") : perform("click", {{"label", u"Save As"_s}}));
    if (milliseconds == 0 && reads)
        verifyThatAnotherApplicationWorks();
}

// From here on, the buses don't restart.
void FaultsTest::theAccessibilityBusGoesAway()
{
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QVERIFY(!perform("read_ui").hasFailed);
    const QList<qint64> buses = PrivateDesktop::processesWith("accessibility.conf");
    QVERIFY(!buses.isEmpty());
    killAll(buses);
    QVERIFY(QTest::qWaitFor(
        [&] { return !PrivateDesktop::processesWith("accessibility.conf").contains(buses.first()); },
        PrivateDesktop::patience));

    for (const char *action : {"read_ui", "click"}) {
        const Outcome outcome = perform(action, {{"label", u"Save"_s}});
        QVERIFY(outcome.hasFailed);
        verifyOneClearLine(outcome);
    }
    const Outcome outcome = perform("open_app", {{"app", u"FeatherPad"_s}});
    VERIFY_EFFECT(Screen::activeClass() == "FeatherPad"_L1, outcome);
}

// The window manager and most applications exit with the bus; the program must not.
void FaultsTest::theSessionBusGoesAway()
{
    QVERIFY(PrivateDesktop::open(u"featherpad"_s, {}, u"FeatherPad"_s));
    const auto buses = [] { return PrivateDesktop::processesWith("--session"); };
    QVERIFY(!buses().isEmpty());
    killAll(buses());
    QVERIFY(QTest::qWaitFor([&] { return buses().isEmpty(); }, PrivateDesktop::patience));
    for (const char *action : {"read_ui", "click", "type_text", "press_key", "list_windows"})
        verifyOneClearLine(perform(action, {{"label", u"Save"_s}, {"text", u"a"_s}, {"key", u"a"_s}}));
    verifyOneClearLine(perform("open_app", {{"app", u"Mousepad"_s}}));
    verifyOneClearLine(perform("quit_app", {{"app", u"Mousepad"_s}}));
    verifyOneClearLine(perform("open_path", {{"path", PrivateDesktop::home(u"Documents"_s)}}));
    const Outcome shot = perform("screenshot");
    verifyOneClearLine(shot);
    // On Plasma, pictures come over this bus.
    QVERIFY2(shot.hasFailed == (Screen::session() == Screen::Session::Plasma), qPrintable(shot.line));
}

QTEST_MAIN(FaultsTest)
#include "FaultsTest.moc"
