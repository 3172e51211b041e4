// SPDX-License-Identifier: Apache-2.0
// Every way to detect a locked screen, and what must not be mistaken for one.
#include "Desktop/Linux/Session/LinuxSession.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Desktop/Linux/X11/Grabs.h"
#include "Support/Awaited.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

// A fake screen saver or login manager; accepts calls on any interface.
class LockingService : public QDBusVirtualObject
{
public:
    bool isActive = false;
    bool answers = true;

    QString introspect(const QString &) const override { return QString(); }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (!answers)
            return true;
        if (message.member() == "GetActive"_L1)
            return connection.send(message.createReply(isActive));
        if (message.member() == "GetSession"_L1 && message.arguments().value(0) == u"7"_s)
            return connection.send(message.createReply(
                QVariant::fromValue(QDBusObjectPath(u"/org/freedesktop/login1/session/_37"_s))));
        if (message.member() == "Get"_L1 && message.path().endsWith("/_37"_L1) &&
            message.arguments() == QVariantList{u"org.freedesktop.login1.Session"_s, u"LockedHint"_s})
            return connection.send(
                message.createReply(QVariant::fromValue(QDBusVariant(QVariant(isActive)))));
        return false;
    }
};

// An override-redirect window of another client.
class OverrideRedirectWindow
{
public:
    OverrideRedirectWindow(xcb_connection_t *connection, const QRect &place) : m_connection(connection)
    {
        const xcb_screen_t *const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
        constexpr std::uint32_t overrideRedirect = 1;
        m_window = xcb_generate_id(connection);
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_window, screen->root, std::int16_t(place.x()),
                          std::int16_t(place.y()), std::uint16_t(place.width()),
                          std::uint16_t(place.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
        xcb_map_window(connection, m_window);
    }
    ~OverrideRedirectWindow() { xcb_destroy_window(m_connection, m_window); }
    OverrideRedirectWindow(const OverrideRedirectWindow &) = delete;
    OverrideRedirectWindow &operator=(const OverrideRedirectWindow &) = delete;

    void lower()
    {
        constexpr std::uint32_t below = XCB_STACK_MODE_BELOW;
        xcb_configure_window(m_connection, m_window, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    }

    bool grabKeyboard()
    {
        const X11Reply<xcb_grab_keyboard_reply_t> reply(
            xcb_grab_keyboard_reply(m_connection,
                                    xcb_grab_keyboard(m_connection, 0, m_window, XCB_CURRENT_TIME,
                                                      XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                    nullptr));
        return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }

    bool grabPointer()
    {
        const X11Reply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
            m_connection,
            xcb_grab_pointer(m_connection, 0, m_window, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE,
                             XCB_NONE, XCB_CURRENT_TIME),
            nullptr));
        return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }

private:
    xcb_connection_t *m_connection;
    xcb_window_t m_window = XCB_NONE;
};

const QRect screen(0, 0, 1280, 800);

} // namespace

class LinuxSessionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();
    void aRealLockerLocks();
    void grabsAndCoveredMonitorsMeanLocked_data();
    void grabsAndCoveredMonitorsMeanLocked();
    void aCoverBelowAnApplicationIsNoLock();
    void anOpenMenuIsNoLock();
    void aScreenSaverReportsTheLock_data();
    void aScreenSaverReportsTheLock();
    void aHungScreenSaverTimesOut();
    void theLoginManagerReportsTheLock();
    void noServiceIsStarted();

private:
    bool isLocked() { return Awaited::result(m_session.isLocked()); }
    bool becomes(bool locked)
    {
        return QTest::qWaitFor([&] { return isLocked() == locked; }, LinuxBench::patience);
    }

    QProcess m_systemBus; // private
    QByteArray m_systemBusAddress;
    LinuxBench m_bench;
    LinuxSession m_session{&m_bench.display, [] { return std::nullopt; }};
    std::shared_ptr<xcb_connection_t> m_other{xcb_connect(nullptr, nullptr), &xcb_disconnect};
};

// The D-Bus library reads the address once, at its first connection to any bus.
void LinuxSessionTest::initTestCase()
{
    m_systemBus.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
    QVERIFY(QTest::qWaitFor([this] { return m_systemBus.canReadLine(); }, LinuxBench::patience));
    m_systemBusAddress = m_systemBus.readLine().trimmed();
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_systemBusAddress);
}

void LinuxSessionTest::cleanupTestCase()
{
    m_systemBus.kill();
    m_systemBus.waitForFinished();
}

void LinuxSessionTest::cleanup()
{
    QVERIFY(!isLocked());
}

void LinuxSessionTest::aRealLockerLocks()
{
    QVERIFY(!isLocked());
    {
        const LinuxBench::Program locker = LinuxBench::start(u"i3lock"_s, {u"-n"_s});
        QVERIFY(becomes(true));
    }
    QVERIFY(becomes(false));
}

void LinuxSessionTest::grabsAndCoveredMonitorsMeanLocked_data()
{
    QTest::addColumn<QList<QRect>>("covers");
    QTest::addColumn<bool>("takesKeyboard");
    QTest::addColumn<bool>("takesPointer");
    QTest::addColumn<bool>("isLock");
    const QList<QRect> whole{screen};
    const QList<QRect> halves{QRect(0, 0, 640, 800), QRect(640, 0, 640, 800)};
    const QList<QRect> withoutEdges{screen - QMargins(1, 1, 1, 1)};
    const QList<QRect> withoutPanel{screen - QMargins(0, 24, 0, 0)};
    QTest::newRow("one window") << whole << true << true << true;
    QTest::newRow("a window a monitor") << halves << true << true << true;
    QTest::newRow("but the edges") << withoutEdges << true << true << true;
    QTest::newRow("but a panel") << withoutPanel << true << true << false;
    QTest::newRow("keyboard alone") << whole << true << false << false;
    QTest::newRow("pointer alone") << whole << false << true << false;
    QTest::newRow("no grab") << whole << false << false << false;
}

void LinuxSessionTest::grabsAndCoveredMonitorsMeanLocked()
{
    QFETCH(QList<QRect>, covers);
    QFETCH(bool, takesKeyboard);
    QFETCH(bool, takesPointer);
    QFETCH(bool, isLock);
    const auto letGo = qScopeGuard([this] {
        xcb_ungrab_keyboard(m_other.get(), XCB_CURRENT_TIME);
        xcb_ungrab_pointer(m_other.get(), XCB_CURRENT_TIME);
        xcb_flush(m_other.get());
    });
    std::vector<std::unique_ptr<OverrideRedirectWindow>> windows;
    for (const QRect &place : covers)
        windows.push_back(std::make_unique<OverrideRedirectWindow>(m_other.get(), place));
    QVERIFY(!takesKeyboard || windows.front()->grabKeyboard());
    QVERIFY(!takesPointer || windows.front()->grabPointer());
    // Round trip: the server has processed all requests.
    std::free(xcb_get_input_focus_reply(m_other.get(), xcb_get_input_focus(m_other.get()), nullptr));
    QCOMPARE(isLocked(), isLock);
}

// Some window managers keep such a window at the bottom of the stack; a menu may hold the grabs.
void LinuxSessionTest::aCoverBelowAnApplicationIsNoLock()
{
    const LinuxBench::Program editor = LinuxBench::start(u"mousepad"_s);
    QVERIFY(m_bench.waitForActive(u"Mousepad"_s));
    OverrideRedirectWindow cover(m_other.get(), screen);
    cover.lower();
    QVERIFY(cover.grabKeyboard());
    QVERIFY(cover.grabPointer());
    QVERIFY(!isLocked());
    xcb_ungrab_keyboard(m_other.get(), XCB_CURRENT_TIME);
    xcb_ungrab_pointer(m_other.get(), XCB_CURRENT_TIME);
    xcb_flush(m_other.get());
}

// It grabs keyboard and pointer.
void LinuxSessionTest::anOpenMenuIsNoLock()
{
    const LinuxBench::Program editor = LinuxBench::start(u"mousepad"_s);
    QVERIFY(m_bench.waitForActive(u"Mousepad"_s));
    const auto isGrabbed = [this] {
        return Awaited::result(
            m_bench.display.run([this] { return X11Grabs::isKeyboardTaken(m_bench.display.connection()); }));
    };
    QProcess::execute(u"timeout"_s, {u"20"_s, u"xdotool"_s, u"key"_s, u"alt+f"_s});
    QVERIFY(QTest::qWaitFor(isGrabbed, LinuxBench::patience));
    QVERIFY(!isLocked());
}

void LinuxSessionTest::aScreenSaverReportsTheLock_data()
{
    QTest::addColumn<QString>("service");
    for (const QString &desktop : {u"freedesktop"_s, u"gnome"_s, u"cinnamon"_s, u"mate"_s, u"xfce"_s})
        QTest::newRow(qPrintable(desktop)) << u"org.%1.ScreenSaver"_s.arg(desktop);
}

void LinuxSessionTest::aScreenSaverReportsTheLock()
{
    QFETCH(QString, service);
    LockingService screenSaver;
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, service);
    const auto leave = qScopeGuard([&] { QDBusConnection::disconnectFromBus(service); });
    const QString path = u'/' + QString(service).replace(u'.', u'/');
    QVERIFY(bus.registerVirtualObject(path, &screenSaver));
    QVERIFY(bus.registerService(service));
    QVERIFY(!isLocked());
    screenSaver.isActive = true;
    QVERIFY(becomes(true));
}

void LinuxSessionTest::aHungScreenSaverTimesOut()
{
    const QString service = u"org.freedesktop.ScreenSaver"_s;
    LockingService screenSaver;
    screenSaver.answers = false;
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, service);
    const auto leave = qScopeGuard([&] { QDBusConnection::disconnectFromBus(service); });
    QVERIFY(bus.registerVirtualObject(u"/org/freedesktop/ScreenSaver"_s, &screenSaver));
    QVERIFY(bus.registerService(service));
    QElapsedTimer elapsed;
    elapsed.start();
    QVERIFY(!isLocked());
    QVERIFY(elapsed.elapsed() < LinuxBench::patience);
}

void LinuxSessionTest::theLoginManagerReportsTheLock()
{
    LockingService manager;
    manager.isActive = true;
    QDBusConnection bus = QDBusConnection::connectToBus(QString::fromUtf8(m_systemBusAddress), u"login"_s);
    const auto leave = qScopeGuard([] {
        qunsetenv("XDG_SESSION_ID");
        QDBusConnection::disconnectFromBus(u"login"_s);
    });
    QVERIFY(bus.registerVirtualObject(u"/org/freedesktop/login1"_s, &manager, QDBusConnection::SubPath));
    QVERIFY(bus.registerService(u"org.freedesktop.login1"_s));

    QVERIFY(!isLocked()); // no XDG_SESSION_ID: not a login session
    qputenv("XDG_SESSION_ID", "8");
    QVERIFY(!isLocked());
    qputenv("XDG_SESSION_ID", "7");
    QVERIFY(becomes(true));
    manager.isActive = false;
    QVERIFY(becomes(false));
}

void LinuxSessionTest::noServiceIsStarted()
{
    const QString trace = QDir::home().filePath(u"started"_s);
    const QDir services(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/dbus-1/services"_s);
    QVERIFY(services.exists());
    QFile entry(services.filePath(u"org.mate.ScreenSaver.service"_s));
    QVERIFY(entry.open(QIODevice::WriteOnly));
    entry.write("[D-BUS Service]\nName=org.mate.ScreenSaver\nExec=/usr/bin/touch " + trace.toUtf8() + '\n');
    entry.close();
    const auto call = [](const QString &service, const QString &method) {
        const QString path = u'/' + QString(service).replace(u'.', u'/');
        LinuxBench::output(u"dbus-send"_s, {u"--session"_s, u"--type=method_call"_s, u"--dest="_s + service,
                                            path, service + u'.' + method});
    };
    call(u"org.freedesktop.DBus"_s, u"ReloadConfig"_s);
    QVERIFY(!isLocked());
    QVERIFY(!QFile::exists(trace));
    // A plain call does start it.
    call(u"org.mate.ScreenSaver"_s, u"GetActive"_s);
    QVERIFY(QTest::qWaitFor([&] { return QFile::exists(trace); }, LinuxBench::patience));
    QVERIFY(entry.remove());
}

QTEST_MAIN(LinuxSessionTest)
#include "LinuxSessionTest.moc"
