// SPDX-License-Identifier: Apache-2.0
// A missing, hung or crashed X server causes an error message, never a crash or a hang.
#include "Desktop/Linux/LinuxBench.h"
#include "Desktop/Linux/LinuxScreenCapture.h"
#include "Desktop/Linux/Window/LinuxDisplay.h"
#include "Desktop/Linux/XServer.h"
#include "Support/Awaited.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class X11DisplayTest : public QObject
{
    Q_OBJECT

private:
    std::optional<XServer> m_server;

    QString errorOfSnapshot(LinuxBench &bench)
    {
        const auto ask = [&bench] { bench.display.windows().snapshot(); };
        return LinuxBench::errorOf(bench.display.run(ask));
    }

    static QCoro::Task<void> tryOut(X11Display &display, bool &isRun)
    {
        const auto job = [&isRun] { isRun = true; };
        co_await display.run(job);
    }

    struct WindowSystem
    {
        bool isThere = false;
        QByteArray name; // QT_QPA_PLATFORM, if prepare() has set it
    };

    // What LinuxDisplay::prepare() finds and sets.
    static WindowSystem windowSystem()
    {
        const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
        qunsetenv("QT_QPA_PLATFORM");
        WindowSystem result;
        result.isThere = LinuxDisplay::prepare([] { return false; });
        result.name = qgetenv("QT_QPA_PLATFORM");
        if (!platform.isNull())
            qputenv("QT_QPA_PLATFORM", platform);
        return result;
    }

private Q_SLOTS:
    // A private X server for the services to connect to.
    void init()
    {
        m_server.emplace();
        QVERIFY(m_server->isRunning());
    }

    void cleanup() { m_server.reset(); }

    void withoutAServerConstructionThrows()
    {
        qunsetenv("DISPLAY");
        SystemClock clock;
        QVERIFY_THROWS_EXCEPTION(PlatformError, X11Display{clock});
    }

    void whatWaitsForAWindowEndsWithTheConnection()
    {
        SystemClock clock;
        auto display = std::make_unique<X11Display>(clock);
        DesktopWindow window;
        window.identifier = 1;
        QCoro::Task<void> coming = display->bringForward(window);
        display.reset();
        QCOMPARE(LinuxBench::errorOf(std::move(coming)),
                 u"The connection to the X server has been closed."_s);
    }

    void aServerHungFromTheStartCountsAsAbsent()
    {
        QVERIFY(windowSystem().isThere);
        m_server->signal(SIGSTOP);
        SystemClock clock;
        QElapsedTimer elapsed;
        elapsed.start();
        QVERIFY_THROWS_EXCEPTION(PlatformError, X11Display{clock});
        QVERIFY(!windowSystem().isThere);
        QVERIFY(elapsed.elapsed() < LinuxBench::patience);
    }

    void anObstaclePreventsConnecting()
    {
        SystemClock clock;
        X11Display display(clock, u"This server is none of ours."_s);
        bool isRun = false;
        QCOMPARE(LinuxBench::errorOf(tryOut(display, isRun)), u"This server is none of ours."_s);
        QVERIFY(!isRun);
    }

    // By itself, Qt would follow the environment to the outer session.
    void qtUsesTheServerOfTheServices()
    {
        QVERIFY(windowSystem().name.isEmpty());
        const QByteArray type = qgetenv("XDG_SESSION_TYPE");
        qputenv("WAYLAND_DISPLAY", "wayland-0");
        qputenv("XDG_SESSION_TYPE", "wayland");
        const WindowSystem system = windowSystem();
        qunsetenv("WAYLAND_DISPLAY");
        qputenv("XDG_SESSION_TYPE", type);
        QVERIFY(system.isThere);
        QCOMPARE(system.name, QByteArray("xcb"));
    }

    void withoutAWindowManagerTheListIsEmpty()
    {
        LinuxBench bench;
        const WorkspaceSnapshot snapshot = Awaited::result(bench.workspace.snapshot());
        QVERIFY(snapshot.windows.isEmpty());
        QVERIFY(!snapshot.frontmost);
    }

    void aLostServerFailsEveryService()
    {
        LinuxBench bench;
        LinuxScreenCapture capture(bench.display);
        QCOMPARE(errorOfSnapshot(bench), QString());
        m_server->kill();
        const QTemporaryDir folder;
        const KeyStroke key{36, {}, {}};
        const RunningApplication receiver;
        for (int round = 0; round < 2; ++round) {
            QVERIFY(errorOfSnapshot(bench).contains(u"X server"));
            QVERIFY(!LinuxBench::errorOf(bench.keyboard.post({key}, 0us, receiver)).isEmpty());
            QVERIFY(!LinuxBench::errorOf(capture.capture(folder.filePath(u"x.png"_s))).isEmpty());
        }
    }

    void aHungServerTimesOut()
    {
        LinuxBench bench;
        QCOMPARE(errorOfSnapshot(bench), QString());
        m_server->signal(SIGSTOP);
        QElapsedTimer elapsed;
        elapsed.start();
        QVERIFY(errorOfSnapshot(bench).contains(u"X server"));
        QVERIFY(elapsed.elapsed() < LinuxBench::patience);
        m_server->signal(SIGCONT);
        QTRY_COMPARE(errorOfSnapshot(bench), QString());
        // Destruction must not wait for the server either.
        m_server->signal(SIGSTOP);
        QVERIFY(errorOfSnapshot(bench).contains(u"X server"));
    }
};

QTEST_MAIN(X11DisplayTest)
#include "DisplayTest.moc"
