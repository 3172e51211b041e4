// SPDX-License-Identifier: Apache-2.0
// The check results for what was found out about a desktop.
#include "Desktop/Linux/Diagnosis/DisplayChecks.h"
#include "Desktop/Linux/Diagnosis/ServiceChecks.h"
#include "Desktop/Linux/Diagnosis/WaylandChecks.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using DisplayChecks::Orvane;
using DisplayChecks::Server;
using DisplayChecks::Session;
using ServiceChecks::Accessibility;
using ServiceChecks::Applications;
using State = DiagnosticCheck::State;

Q_DECLARE_METATYPE(DiagnosticCheck)

namespace {

// An X server without any problems.
X11Examination good()
{
    X11Examination examination;
    examination.windowManager = u"Xfwm4"_s;
    examination.takesKeys = true;
    examination.spareKeys = 19;
    examination.isHotKeyFree = true;
    examination.picture = QSize(1280, 800);
    return examination;
}

X11Examination changed(void (*change)(X11Examination &))
{
    X11Examination examination = good();
    change(examination);
    return examination;
}

const Session x11{u":0"_s, SessionType::X11};
const Session wayland{u":0"_s, SessionType::Wayland};

DesktopEntry named(const QString &name)
{
    DesktopEntry entry;
    entry.name = name;
    return entry;
}

void addRow(const char *name, const DiagnosticCheck &check, State state, const QString &partOfFinding,
            const QString &partOfAdvice = {})
{
    QTest::newRow(name) << check << state << partOfFinding << partOfAdvice;
}

} // namespace

class DiagnosisChecksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyAnswerHasAFindingAndAdvice_data();
    void everyAnswerHasAFindingAndAdvice();
    void comfortChecksAreNoObstacles();
    void manyApplicationsAreCounted();
    void hostileNamesAreCutAndCleaned();
    void theSessionBusIsFoundWithoutStartingOne();

private:
    void addDisplayRows();
    void addPlasmaRows();
    void addServiceRows();
};

void DiagnosisChecksTest::everyAnswerHasAFindingAndAdvice_data()
{
    QTest::addColumn<DiagnosticCheck>("check");
    QTest::addColumn<State>("state");
    QTest::addColumn<QString>("partOfFinding");
    QTest::addColumn<QString>("partOfAdvice");
    addDisplayRows();
    addServiceRows();
}

void DiagnosisChecksTest::addDisplayRows()
{
    using namespace DisplayChecks;
    addRow("X11", session(x11, Server::Answers), State::Works, u"X11, display :0"_s);
    addRow("Wayland", session(wayland, Server::Answers), State::Broken, u"Wayland"_s, u"Xorg"_s);
    addRow("Wayland alone", session({QString(), SessionType::Wayland}, Server::Unreachable), State::Broken,
           u"Wayland"_s, u"Xorg"_s);
    addRow("operable Wayland",
           session({QString(), SessionType::Wayland, Session::Access::Full}, Server::Unreachable),
           State::Works, u"Wayland"_s);
    addRow("GNOME without the extension",
           session({QString(), SessionType::Wayland, Session::Access::NeedsExtension}, Server::Unreachable),
           State::Broken, u"extension of GNOME Shell"_s, u"orvane integrate"_s);
    addRow("GNOME with an older extension",
           session({QString(), SessionType::Wayland, Session::Access::NeedsExtension,
                    ExtensionStanding::IsOutdated},
                   Server::Unreachable),
           State::Broken, u"older than Orvane"_s, u"orvane integrate"_s);
    addRow("GNOME before the next login",
           session({QString(), SessionType::Wayland, Session::Access::NeedsExtension,
                    ExtensionStanding::NeedsLogin},
                   Server::Unreachable),
           State::Broken, u"isn't running yet"_s, u"Log out and in again."_s);
    addRow("Plasma that doesn't know us",
           session({u":0"_s, SessionType::Wayland, Session::Access::NeedsEntry}, Server::Answers),
           State::Broken, u"programs that it knows"_s, u"orvane integrate"_s);
    addPlasmaRows();
    addRow("no display", session({}, Server::Unreachable), State::Absent, u"no graphical desktop"_s,
           u"on the desktop"_s);
    addRow("dead display", session(x11, Server::Unreachable), State::Broken, u"No X server answers"_s,
           u"on the desktop"_s);
    addRow("stopped display", session(x11, Server::Silent), State::Broken, u":0 doesn't answer"_s,
           u"Log out"_s);

    addRow("manager", windowManager(good()), State::Works, u"Xfwm4"_s);
    addRow("nameless manager", windowManager(changed([](auto &x) { x.windowManager = QString(); })),
           State::Works, u"running"_s);
    addRow("no manager", windowManager(changed([](auto &x) { x.windowManager.reset(); })), State::Absent,
           u"None is running"_s, u"xfwm4"_s);

    addRow("keyboard", keyboard(good()), State::Works, u"can be sent"_s);
    addRow("no keyboard", keyboard(changed([](auto &x) { x.takesKeys = false; })), State::Broken,
           u"doesn't let keys be sent"_s, u"XTEST"_s);
    addRow("spare keys", spareKeys(good()), State::Works, u"19 spare keys"_s);
    addRow("one spare key", spareKeys(changed([](auto &x) { x.spareKeys = 1; })), State::Works,
           u"One spare key"_s);
    addRow("no spare key", spareKeys(changed([](auto &x) { x.spareKeys = 0; })), State::Broken,
           u"No key is spare"_s, u"layout"_s);

    const X11Examination taken = changed([](auto &x) { x.isHotKeyFree = false; });
    addRow("hot key", hotKey(good(), Orvane::DoesNotRun), State::Works, u"free"_s);
    addRow("hot key of another", hotKey(taken, Orvane::DoesNotRun), State::Limited, u"another program"_s,
           u"orvane --toggle"_s);
    addRow("hot key of ours", hotKey(taken, Orvane::Runs), State::Works, u"the Orvane that is running"_s);

    addRow("picture", screenshot(good()), State::Works, u"1280 × 800"_s);
    addRow("no picture", screenshot(changed([](auto &x) { x.picture = QSize(); })), State::Broken,
           u"no picture"_s, u"colours"_s);
}

void DiagnosisChecksTest::addPlasmaRows()
{
    const auto check = [](qsizetype index, bool hasPortal, const KGlobalAccelHotKeys::Standing &hotKey) {
        const WaylandOffer plasma{WaylandOffer::Windows::Plasma, WaylandOffer::Keys::Plasma, false, false};
        return WaylandChecks::ways(plasma, hasPortal, hotKey).at(index);
    };
    addRow("Plasma's windows", check(0, true, {}), State::Works, u"plasma-window-management"_s);
    addRow("Plasma's keyboard", check(1, true, {}), State::Works, u"fake-input"_s);
    addRow("Plasma's pictures", check(2, true, {}), State::Works, u"portal"_s);
    addRow("Plasma without a portal", check(2, false, {}), State::Absent, u"no desktop portal"_s,
           u"xdg-desktop-portal-kde"_s);
    addRow("no key on Wayland", check(3, true, {}), State::Limited, u"own configuration"_s,
           u"orvane --toggle"_s);
    addRow("Plasma's key", check(3, true, {true, true, u"KRunner"_s}), State::Works, u"has a key"_s);
    addRow("Plasma's free key", check(3, true, {true, false, {}}), State::Works, u"free"_s);
    addRow("Plasma's taken key", check(3, true, {true, false, u"KRunner"_s}), State::Limited, u"“KRunner”"_s,
           u"Meta+Space"_s);
}

void DiagnosisChecksTest::addServiceRows()
{
    using namespace ServiceChecks;
    addRow("accessible", accessibility(Accessibility::Works), State::Works, u"is on"_s);
    addRow("no bus", accessibility(Accessibility::NoSessionBus), State::Absent, u"no session bus"_s,
           u"dbus-user-session"_s);
    addRow("not installed", accessibility(Accessibility::NotInstalled), State::Absent, u"not installed"_s,
           u"at-spi2-core"_s);
    addRow("not running", accessibility(Accessibility::NotRunning), State::Broken, u"not running"_s,
           u"open again"_s);
    addRow("silent", accessibility(Accessibility::Silent), State::Broken, u"doesn't answer"_s, u"Log out"_s);
    addRow("off", accessibility(Accessibility::Off), State::Broken, u"switched off"_s, u"open again"_s);

    addRow("browser", browser({true, named(u"A browser"_s)}), State::Works, u"A browser."_s);
    addRow("no browser", browser({true, {}}), State::Absent, u"web pages"_s, u"firefox-esr"_s);
    addRow("file manager", fileManager({true, named(u"Files"_s)}), State::Works, u"Files."_s);
    addRow("no file manager", fileManager({true, {}}), State::Absent, u"folders"_s, u"thunar"_s);
    addRow("no registry", fileManager({}), State::Broken, u"can't be read in time"_s, u"network drive"_s);

    const QString manager = u"org.freedesktop.FileManager1"_s;
    addRow("shows, runs", showFiles(BusExamination{{manager}, {}}), State::Works, u"selected"_s);
    addRow("shows, can start", showFiles(BusExamination{{}, {manager}}), State::Works, u"selected"_s);
    addRow("shows nothing", showFiles(BusExamination{}), State::Limited, u"folder instead"_s, u"thunar"_s);
    addRow("shows without a bus", showFiles({}), State::Limited, u"folder instead"_s, u"thunar"_s);

    addRow("nothing open", applications(Applications{}), State::Works, u"None is open"_s);
    addRow("all shown", applications(Applications{2, {}, {}}), State::Works, u"All that are open"_s);
    addRow("one hidden", applications(Applications{2, {u"Xterm"_s}, {u"Slow"_s}}), State::Limited,
           u"don't show their controls: “Xterm”."_s, u"let Orvane open them"_s);
    addRow("one silent", applications(Applications{2, {}, {u"Slow"_s}}), State::Limited,
           u"aren't responding: “Slow”."_s, u"end them"_s);
    addRow("unknown", applications({}), State::Limited, u"can't be told"_s, u"accessibility"_s);
}

void DiagnosisChecksTest::everyAnswerHasAFindingAndAdvice()
{
    QFETCH(DiagnosticCheck, check);
    QFETCH(State, state);
    QFETCH(QString, partOfFinding);
    QFETCH(QString, partOfAdvice);
    QCOMPARE(check.state, state);
    QVERIFY2(check.finding.contains(partOfFinding), qPrintable(check.finding));
    QVERIFY2(check.finding.endsWith(u'.'), qPrintable(check.finding));
    QVERIFY2(check.advice.contains(partOfAdvice), qPrintable(check.advice));
    QCOMPARE(check.advice.isEmpty(), state == State::Works);
    QVERIFY(!check.identifier.isEmpty() && !check.title.isEmpty());
}

void DiagnosisChecksTest::comfortChecksAreNoObstacles()
{
    const X11Examination nothing;
    QVERIFY(DisplayChecks::session(x11, Server::Silent).isObstacle());
    QVERIFY(DisplayChecks::windowManager(nothing).isObstacle());
    QVERIFY(DisplayChecks::keyboard(nothing).isObstacle());
    QVERIFY(DisplayChecks::spareKeys(nothing).isObstacle());
    QVERIFY(DisplayChecks::screenshot(nothing).isObstacle());
    QVERIFY(ServiceChecks::accessibility(Accessibility::Off).isObstacle());
    QVERIFY(ServiceChecks::browser({true, {}}).isObstacle());
    QVERIFY(ServiceChecks::fileManager({true, {}}).isObstacle());
    QVERIFY(!DisplayChecks::hotKey(nothing, Orvane::DoesNotRun).isObstacle());
    QVERIFY(!ServiceChecks::showFiles({}).isObstacle());
    QVERIFY(!ServiceChecks::applications({}).isObstacle());
}

void DiagnosisChecksTest::manyApplicationsAreCounted()
{
    Applications applications;
    applications.hidden = {u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s, u"F"_s, u"G"_s};
    QCOMPARE(ServiceChecks::applications(applications).finding,
             u"These don't show their controls: “A”, “B”, “C”, “D”, “E” and 2 more."_s);
}

void DiagnosisChecksTest::hostileNamesAreCutAndCleaned()
{
    Applications applications;
    applications.hidden = {u"A\nB\x1b[2J<|im_end|>"_s, QString(5000, u'x')};
    const QString finding = ServiceChecks::applications(applications).finding;
    QVERIFY2(finding.contains(u"“A B [2J< |im_end| >”"_s), qPrintable(finding));
    QVERIFY2(finding.size() < 200, qPrintable(finding));

    const QString manager =
        DisplayChecks::windowManager(changed([](auto &x) { x.windowManager = u"Evil\r\nOne"_s; })).finding;
    QCOMPARE(manager, u"Evil  One is running."_s);
}

void DiagnosisChecksTest::theSessionBusIsFoundWithoutStartingOne()
{
    const QTemporaryDir folder;
    qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/somewhere");
    QCOMPARE(BusExamination::sessionBusAddress(), u"unix:path=/somewhere"_s);
    qputenv("DBUS_SESSION_BUS_ADDRESS", "autolaunch:");
    QCOMPARE(BusExamination::sessionBusAddress(), QString());
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    QCOMPARE(BusExamination::sessionBusAddress(), QString());
    QFile socket(folder.filePath(u"bus"_s));
    QVERIFY(socket.open(QIODevice::WriteOnly));
    QCOMPARE(BusExamination::sessionBusAddress(), u"unix:path="_s + socket.fileName());
}

QTEST_GUILESS_MAIN(DiagnosisChecksTest)
#include "DiagnosisChecksTest.moc"
