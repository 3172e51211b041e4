// SPDX-License-Identifier: Apache-2.0
// Names and windows of real applications, judged by the windows on the screen. Actions on each
// application are tested in matrix/.
#include "applications/support/DesktopTest.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QScopeGuard>

#include <csignal>

using namespace Qt::StringLiterals;

class ApplicationsTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void opensByAName_data();
    void opensByAName();
    void tellsWhichApplicationIsMissing_data();
    void tellsWhichApplicationIsMissing();
    void doesNotQuitWhatDoesNotRun();
    void tellsThatAnApplicationGoesOnWithoutAWindow();
    void listsTheWindowsFrontToBack();
};

void ApplicationsTest::opensByAName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("windowClass");
    QTest::newRow("in another letter case") << u"mousePAD"_s << u"Mousepad"_s;
    QTest::newRow("by a part of its name") << u"calc"_s << u"gnome-calculator"_s;
}

void ApplicationsTest::opensByAName()
{
    QFETCH(QString, name);
    QFETCH(QString, windowClass);
    const Outcome outcome = perform("open_app", {{"app", name}});
    VERIFY_EFFECT(Screen::activeClass().compare(windowClass, Qt::CaseInsensitive) == 0, outcome);
    QVERIFY2(!outcome.hasFailed && outcome.line.endsWith(" is now frontmost."_L1), qPrintable(outcome.line));
}

void ApplicationsTest::tellsWhichApplicationIsMissing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("unknown") << u"Zanzibar Studio"_s;
    QTest::newRow("an alias of what is not installed") << u"settings"_s;
}

void ApplicationsTest::tellsWhichApplicationIsMissing()
{
    QFETCH(QString, name);
    const Outcome outcome = perform("open_app", {{"app", name}});
    QCOMPARE(outcome.line, u"Couldn't find an app called “%1”."_s.arg(name));
    QVERIFY(outcome.hasFailed);
    QVERIFY2(Screen::windows().isEmpty(), qPrintable(Screen::described()));
}

void ApplicationsTest::doesNotQuitWhatDoesNotRun()
{
    QCOMPARE(perform("quit_app", {{"app", u"Mousepad"_s}}).line, u"Mousepad is not running."_s);
}

void ApplicationsTest::tellsThatAnApplicationGoesOnWithoutAWindow()
{
    const auto daemons = [] { return PrivateDesktop::processesWith("thunar --daemon"); };
    PrivateDesktop::start(u"thunar"_s, {u"--daemon"_s});
    QVERIFY(QTest::qWaitFor([&] { return !daemons().isEmpty(); }, PrivateDesktop::patience));
    const qint64 daemon = daemons().constFirst();
    const auto end = qScopeGuard([daemon] { ::kill(static_cast<pid_t>(daemon), SIGKILL); });
    const auto *bus = QDBusConnection::sessionBus().interface();
    const auto answers = [bus] { return bus->isServiceRegistered(u"org.xfce.FileManager"_s).value(); };
    QVERIFY(QTest::qWaitFor(answers, PrivateDesktop::patience));
    QVERIFY(PrivateDesktop::open(u"thunar"_s, {}, u"Thunar"_s));
    QCOMPARE(Screen::windowsOf(u"Thunar"_s).constFirst().process, daemon);
    const Outcome outcome = perform("quit_app", {{"app", u"Thunar"_s}});
    VERIFY_EFFECT(Screen::windows().isEmpty(), outcome);
    QCOMPARE(outcome.line, u"Asked Thunar to quit (it may be waiting on a save prompt)."_s);
}

void ApplicationsTest::listsTheWindowsFrontToBack()
{
    PrivateDesktop::write(PrivateDesktop::home(u"Documents/plan.txt"_s), "a plan");
    QVERIFY(
        PrivateDesktop::open(u"mousepad"_s, {PrivateDesktop::home(u"Documents/plan.txt"_s)}, u"Mousepad"_s));
    QVERIFY(PrivateDesktop::open(u"gnome-calculator"_s, {}, u"gnome-calculator"_s));
    const QString both = perform("list_windows").line;
    const qsizetype calculator = both.indexOf("Calculator"_L1);
    const qsizetype mousepad = both.indexOf(u"Mousepad — "_s);
    QVERIFY2(calculator >= 0 && mousepad > calculator && both.contains("plan.txt"_L1), qPrintable(both));

    QVERIFY(PrivateDesktop::clear());
    QCOMPARE(perform("list_windows").line, u"none"_s);
}

QTEST_MAIN(ApplicationsTest)
#include "ApplicationsTest.moc"
