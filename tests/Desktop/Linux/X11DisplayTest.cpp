// SPDX-License-Identifier: Apache-2.0
// An X server that is missing, hangs or dies costs a sentence, never the program.
#include "Desktop/Linux/LinuxBench.h"
#include "Desktop/Linux/LinuxScreenCapture.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class X11DisplayTest : public QObject
{
    Q_OBJECT

private:
    QByteArray m_display = qgetenv("DISPLAY");
    QProcess m_server;

    QString errorOfSnapshot(LinuxBench &bench)
    {
        const auto ask = [&bench] { bench.display.windows().snapshot(); };
        return LinuxBench::errorOf(bench.display.run(ask));
    }

    void signalServer(int signal) { ::kill(pid_t(m_server.processId()), signal); }

private Q_SLOTS:
    // An X server of the test's own, to which the services connect.
    void init()
    {
        m_server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s});
        QByteArray number;
        const auto isUp = [this, &number] {
            number += m_server.readAllStandardOutput();
            return number.endsWith('\n');
        };
        QVERIFY(QTest::qWaitFor(isUp, LinuxBench::patience));
        qputenv("DISPLAY", ":" + number.trimmed());
    }

    void cleanup()
    {
        qputenv("DISPLAY", m_display);
        signalServer(SIGCONT);
        m_server.terminate();
        m_server.waitForFinished();
    }

    void withoutAServerConstructionThrows()
    {
        qunsetenv("DISPLAY");
        SystemClock clock;
        QVERIFY_THROWS_EXCEPTION(PlatformError, X11Display{clock});
    }

    void withoutAWindowManagerTheListIsEmpty()
    {
        LinuxBench bench;
        QVERIFY(QCoro::waitFor(bench.windowList.onScreenWindows()).isEmpty());
        QVERIFY(!QCoro::waitFor(bench.workspace.frontmostApplication()));
    }

    void aServerThatDiesIsAClearFailureOfEveryService()
    {
        LinuxBench bench;
        LinuxScreenCapture capture(bench.display);
        QCOMPARE(errorOfSnapshot(bench), QString());
        m_server.kill();
        QVERIFY(m_server.waitForFinished());
        const QTemporaryDir folder;
        const KeyStroke key{36, {}, {}};
        for (int round = 0; round < 2; ++round) {
            QVERIFY(errorOfSnapshot(bench).contains(u"X server"));
            QVERIFY(QCoro::waitFor(bench.windowList.onScreenWindows()).isEmpty());
            QVERIFY(!LinuxBench::errorOf(bench.keyboard.post({key}, 0us)).isEmpty());
            QVERIFY(!LinuxBench::errorOf(capture.capture(folder.filePath(u"x.png"_s))).isEmpty());
        }
    }

    void aServerThatHangsCostsABoundedTime()
    {
        LinuxBench bench;
        QCOMPARE(errorOfSnapshot(bench), QString());
        signalServer(SIGSTOP);
        QElapsedTimer elapsed;
        elapsed.start();
        QVERIFY(errorOfSnapshot(bench).contains(u"X server"));
        QVERIFY(elapsed.elapsed() < LinuxBench::patience);
        signalServer(SIGCONT);
        QTRY_COMPARE(errorOfSnapshot(bench), QString());
        // Its end must not wait for the server either.
        signalServer(SIGSTOP);
        QVERIFY(errorOfSnapshot(bench).contains(u"X server"));
    }
};

QTEST_MAIN(X11DisplayTest)
#include "X11DisplayTest.moc"
