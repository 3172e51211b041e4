// SPDX-License-Identifier: Apache-2.0
// What `orvane doctor` reports for one fault at a time, and that it has no side effects.
#include "applications/support/Doctor.h"
#include "applications/support/DesktopTest.h"
#include "applications/support/OrvaneProgram.h"

#include <QDir>
#include <QFileInfo>

#include <xcb/xcb.h>

#include <csignal>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

// Stops programs of this desktop with SIGSTOP for its lifetime.
class Stopped
{
public:
    explicit Stopped(const QByteArray &partOfCommandLine)
        : m_processes(PrivateDesktop::processesWith(partOfCommandLine))
    {
        send(SIGSTOP);
    }
    ~Stopped() { send(SIGCONT); }
    Stopped(const Stopped &) = delete;
    Stopped &operator=(const Stopped &) = delete;

    bool isEmpty() const { return m_processes.isEmpty(); }

private:
    void send(int signal)
    {
        for (const qint64 process : m_processes)
            ::kill(static_cast<pid_t>(process), signal);
    }

    QList<qint64> m_processes;
};

// Another client that grabs Alt+Space.
class KeyOwner
{
public:
    KeyOwner()
    {
        constexpr xcb_keycode_t spaceBar = 65;
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        const auto cookie = xcb_grab_key_checked(m_connection, 0, root, XCB_MOD_MASK_1, spaceBar,
                                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_generic_error_t *refusal = xcb_request_check(m_connection, cookie);
        m_hasKey = !refusal;
        std::free(refusal);
    }
    ~KeyOwner() { xcb_disconnect(m_connection); }
    KeyOwner(const KeyOwner &) = delete;
    KeyOwner &operator=(const KeyOwner &) = delete;

    bool hasKey() const { return m_hasKey; }

private:
    xcb_connection_t *m_connection = xcb_connect(nullptr, nullptr);
    bool m_hasKey = false;
};

} // namespace

class DoctorTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aGoodDesktopWorksAndStaysAsItIs();
    void aDesktopInsideAWaylandSessionWorks();
    void theModelIsMissing_data();
    void theModelIsMissing();
    void somethingIsNotThere_data();
    void somethingIsNotThere();
    void accessibilityIsOff();
    void anApplicationHidesItsControls();
    void anApplicationHangs();
    void aServiceHangs_data();
    void aServiceHangs();
    void theWindowManagerHasEnded();
    void theAccessibilityBusHasDied();

private:
    static void compareWithNow(const Doctor::DesktopState &before);
};

void DoctorTest::init()
{
    OrvaneProgram::installPracticeModel();
}

void DoctorTest::compareWithNow(const Doctor::DesktopState &before)
{
    const Doctor::DesktopState now = Doctor::DesktopState::now();
    QCOMPARE(now.windows, before.windows);
    QCOMPARE(now.activeClass, before.activeClass);
    QCOMPARE(now.keyboard, before.keyboard);
    QStringList added = now.files;
    added.removeIf([&](const QString &file) { return before.files.contains(file); });
    QVERIFY2(now.files == before.files, qPrintable(u"new files: "_s + added.join(u", "_s)));
    for (const qint64 process : now.processes)
        QVERIFY2(before.processes.contains(process), qPrintable(u"process %1 is new"_s.arg(process)));
}

void DoctorTest::aGoodDesktopWorksAndStaysAsItIs()
{
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QVERIFY(!perform("read_ui").hasFailed);
    const Doctor::DesktopState before = Doctor::DesktopState::now();
    const Doctor::Report report = Doctor::consult();
    compareWithNow(before);
    QVERIFY(Doctor::isAccessibilityOn());
    QVERIFY2(report.status == 0 && report.object[u"works"_s].toBool(), qPrintable(report.text));
    for (const QString &identifier : report.identifiers()) {
        // The window manager grabs Alt+Space.
        const QString expected = identifier == u"hot-key"_s ? u"limited"_s : u"works"_s;
        QVERIFY2(report.state(identifier) == expected, qPrintable(report.text));
    }
    QCOMPARE(report.identifiers(),
             QStringList({u"session"_s, u"window-manager"_s, u"accessibility"_s, u"keyboard"_s,
                          u"spare-keys"_s, u"hot-key"_s, u"browser"_s, u"file-manager"_s, u"show-files"_s,
                          u"screenshot"_s, u"applications"_s, u"model"_s, u"llama"_s}));
    QVERIFY(report.finding(u"window-manager"_s).contains(u"Xfwm4"_s));
    QVERIFY(report.finding(u"screenshot"_s).contains(u"1280 × 800"_s));

    const OrvaneProgram::Ending text = OrvaneProgram::run({u"doctor"_s});
    QCOMPARE(text.status, 0);
    QVERIFY2(text.output.endsWith(u"\nAll that tasks need works.\n"_s), qPrintable(text.output));
}

// The outer session's environment variables say nothing about the nested X server.
void DoctorTest::aDesktopInsideAWaylandSessionWorks()
{
    const Doctor::Report report =
        Doctor::consult({{u"WAYLAND_DISPLAY"_s, u"wayland-0"_s}, {u"XDG_SESSION_TYPE"_s, u"wayland"_s}});
    QVERIFY2(report.status == 0, qPrintable(report.text));
    QVERIFY(report.finding(u"session"_s).startsWith(u"X11"_s));
}

void DoctorTest::theModelIsMissing_data()
{
    QTest::addColumn<bool>("isThere");
    QTest::addColumn<QString>("state");
    QTest::newRow("altogether") << false << u"absent"_s;
    QTest::newRow("in part") << true << u"broken"_s;
}

void DoctorTest::theModelIsMissing()
{
    QFETCH(bool, isThere);
    const QString folder = PrivateDesktop::home(u"another"_s);
    if (isThere) {
        const QString models = u"Orvane/Models/qwen2.5-1.5b-instruct-q4_k_m.gguf"_s;
        QVERIFY(QDir().mkpath(QFileInfo(folder + u'/' + models).path()));
        const QByteArray whole = PrivateDesktop::read(PrivateDesktop::home(u".local/share/"_s + models));
        PrivateDesktop::write(folder + u'/' + models, whole.first(whole.size() - 1000));
    }
    const Doctor::Report report = Doctor::consult({{u"ORVANE_HOME"_s, folder}});
    QVERIFY(QDir(folder).removeRecursively());
    QVERIFY2(report.status == 3, qPrintable(report.text));
    QTEST(report.state(u"model"_s), "state");
    QVERIFY2(report.advice(u"model"_s).contains(u"orvane models download"_s), qPrintable(report.text));
}

void DoctorTest::somethingIsNotThere_data()
{
    QTest::addColumn<Doctor::Environment>("changes");
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("state");
    QTest::addColumn<int>("checks");
    const QString nowhere = u"unix:path=/nowhere"_s;
    QTest::newRow("no display") << Doctor::Environment{{u"DISPLAY"_s, {}}} << u"session"_s << u"absent"_s
                                << 3;
    QTest::newRow("an unknown display")
        << Doctor::Environment{{u"DISPLAY"_s, u":4711"_s}} << u"session"_s << u"broken"_s << 3;
    QTest::newRow("no session bus") << Doctor::Environment{{u"DBUS_SESSION_BUS_ADDRESS"_s, {}}}
                                    << u"accessibility"_s << u"absent"_s << 13;
    QTest::newRow("a dead session bus") << Doctor::Environment{{u"DBUS_SESSION_BUS_ADDRESS"_s, nowhere}}
                                        << u"accessibility"_s << u"absent"_s << 13;
    // Without any installed applications.
    QTest::newRow("no browser") << Doctor::Environment{{u"XDG_DATA_DIRS"_s, u"/nowhere"_s}} << u"browser"_s
                                << u"absent"_s << 13;
    QTest::newRow("no file manager") << Doctor::Environment{{u"XDG_DATA_DIRS"_s, u"/nowhere"_s}}
                                     << u"file-manager"_s << u"absent"_s << 13;
}

void DoctorTest::somethingIsNotThere()
{
    QFETCH(Doctor::Environment, changes);
    QFETCH(QString, identifier);
    QFETCH(int, checks);
    const Doctor::DesktopState before = Doctor::DesktopState::now();
    const Doctor::Report report = Doctor::consult(changes);
    compareWithNow(before);
    QVERIFY2(report.status == 4, qPrintable(report.text));
    QTEST(report.state(identifier), "state");
    QVERIFY(!report.advice(identifier).isEmpty());
    QCOMPARE(report.identifiers().size(), checks);
    QCOMPARE(report.state(u"model"_s), u"works"_s);
    QCOMPARE(report.state(u"llama"_s), u"works"_s);
}

void DoctorTest::accessibilityIsOff()
{
    Doctor::switchAccessibility(false);
    const Doctor::Report report = Doctor::consult();
    const bool isStillOff = !Doctor::isAccessibilityOn();
    Doctor::switchAccessibility(true);
    QVERIFY2(report.status == 4, qPrintable(report.text));
    QCOMPARE(report.state(u"accessibility"_s), u"broken"_s);
    QVERIFY2(report.finding(u"accessibility"_s).contains(u"switched off"_s), qPrintable(report.text));
    QVERIFY(isStillOff);
}

void DoctorTest::anApplicationHidesItsControls()
{
    // Chromium does, unless started with --force-renderer-accessibility.
    const QString page = u"data:text/html,<title>quiet</title>"_s;
    QVERIFY(PrivateDesktop::open(
        u"chromium"_s, {u"--no-sandbox"_s, u"--no-first-run"_s, u"--disable-gpu"_s, page}, u"Chromium"_s));
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QVERIFY(!perform("read_ui").hasFailed);
    const Doctor::Report report = Doctor::consult();
    QVERIFY2(report.status == 0, qPrintable(report.text));
    QCOMPARE(report.state(u"applications"_s), u"limited"_s);
    QCOMPARE(report.finding(u"applications"_s),
             u"These don't show their controls: “Chromium Web Browser”."_s);
}

void DoctorTest::anApplicationHangs()
{
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QVERIFY(!perform("read_ui").hasFailed);
    QVERIFY(PrivateDesktop::freezeApplication(u"Mousepad"_s));
    const Doctor::Report report = Doctor::consult();
    QVERIFY2(report.status == 0, qPrintable(report.text));
    QCOMPARE(report.finding(u"applications"_s), u"These aren't responding: “Mousepad”."_s);
}

void DoctorTest::aServiceHangs_data()
{
    QTest::addColumn<QByteArray>("commandLine");
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("state");
    QTest::newRow("X server") << QByteArray("Xvfb") << u"session"_s << u"broken"_s;
    QTest::newRow("session bus") << QByteArray("dbus-daemon --session") << u"accessibility"_s << u"absent"_s;
    QTest::newRow("accessibility switch")
        << QByteArray("at-spi-bus-launcher") << u"accessibility"_s << u"broken"_s;
    QTest::newRow("accessibility bus")
        << QByteArray("accessibility.conf") << u"accessibility"_s << u"broken"_s;
    QTest::newRow("accessibility registry")
        << QByteArray("at-spi2-registryd") << u"accessibility"_s << u"broken"_s;
}

void DoctorTest::aServiceHangs()
{
    QFETCH(QByteArray, commandLine);
    QFETCH(QString, identifier);
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QVERIFY(!perform("read_ui").hasFailed);
    Doctor::Report report;
    {
        const Stopped stopped(commandLine);
        QVERIFY(!stopped.isEmpty());
        report = Doctor::consult();
    }
    QVERIFY2(report.status == 4, qPrintable(report.text));
    QTEST(report.state(identifier), "state");
    QCOMPARE(report.state(u"model"_s), u"works"_s);
    QCOMPARE(Doctor::consult().status, 0);
}

void DoctorTest::theWindowManagerHasEnded()
{
    const auto managers = PrivateDesktop::processesWith("xfwm4");
    QVERIFY(!managers.isEmpty());
    ::kill(static_cast<pid_t>(managers.first()), SIGKILL);
    const auto isManaged = [] { return Doctor::consult().state(u"window-manager"_s) == u"works"_s; };
    QVERIFY(QTest::qWaitFor([&] { return !isManaged(); }, PrivateDesktop::patience));
    const Doctor::Report report = Doctor::consult();
    QVERIFY2(report.status == 4, qPrintable(report.text));
    QCOMPARE(report.state(u"window-manager"_s), u"absent"_s);
    QCOMPARE(report.state(u"hot-key"_s), u"works"_s);
    {
        // The doctor kept no grab, and detects another client's.
        const KeyOwner owner;
        QVERIFY(owner.hasKey());
        QCOMPARE(Doctor::consult().state(u"hot-key"_s), u"limited"_s);
    }
    QCOMPARE(Doctor::consult().state(u"hot-key"_s), u"works"_s);
    PrivateDesktop::start(OrvaneProgram::path(), {u"--background"_s});
    const auto isOurs = [] {
        return Doctor::consult().finding(u"hot-key"_s).contains(u"the Orvane that is running"_s);
    };
    QVERIFY(QTest::qWaitFor(isOurs, PrivateDesktop::patience));
    for (const qint64 orvane : PrivateDesktop::processesWith("orvane --background"))
        ::kill(static_cast<pid_t>(orvane), SIGKILL);
    PrivateDesktop::start(u"xfwm4"_s, {u"--compositor=off"_s});
    QVERIFY(QTest::qWaitFor(isManaged, PrivateDesktop::patience));
}

// Last: the bus doesn't restart.
void DoctorTest::theAccessibilityBusHasDied()
{
    for (const qint64 bus : PrivateDesktop::processesWith("accessibility.conf"))
        ::kill(static_cast<pid_t>(bus), SIGKILL);
    const auto isGone = [] {
        return PrivateDesktop::processesWith("accessibility.conf").isEmpty() &&
               PrivateDesktop::processesWith("at-spi-bus-launcher").isEmpty();
    };
    QVERIFY(QTest::qWaitFor(isGone, PrivateDesktop::patience));
    const Doctor::Report report = Doctor::consult();
    QVERIFY2(report.status == 4, qPrintable(report.text));
    QCOMPARE(report.state(u"accessibility"_s), u"broken"_s);
    QCOMPARE(report.state(u"applications"_s), u"limited"_s);
    // The doctor didn't restart it.
    QVERIFY(isGone());
}

QTEST_MAIN(DoctorTest)
#include "DoctorTest.moc"
