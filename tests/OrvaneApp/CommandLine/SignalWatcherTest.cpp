// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/SignalWatcher.h"

#include <QSignalSpy>
#include <QTest>

#include <csignal>

namespace {

bool hasItsOrdinaryEffect(int signalNumber)
{
    struct sigaction now = {};
    sigaction(signalNumber, nullptr, &now);
    return now.sa_handler == SIG_DFL;
}

} // namespace

class SignalWatcherTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstOneIsReportedAndTheSecondOneEndsTheProgram_data()
    {
        QTest::addColumn<int>("number");
        QTest::newRow("Ctrl+C") << SIGINT;
        QTest::newRow("terminated") << SIGTERM;
    }

    void theFirstOneIsReportedAndTheSecondOneEndsTheProgram()
    {
        QFETCH(int, number);
        SignalWatcher watcher;
        QSignalSpy interrupted(&watcher, &SignalWatcher::interrupted);
        QVERIFY(!hasItsOrdinaryEffect(number));
        QCOMPARE(std::raise(number), 0);
        // Emitted from the event loop, not from the signal handler.
        QCOMPARE(interrupted.size(), 0);
        QTRY_COMPARE(interrupted.size(), 1);
        QVERIFY(hasItsOrdinaryEffect(number));
    }

    void nothingIsLeftBehind()
    {
        {
            const SignalWatcher watcher;
            QVERIFY(!hasItsOrdinaryEffect(SIGINT));
        }
        QVERIFY(hasItsOrdinaryEffect(SIGINT));
        QVERIFY(hasItsOrdinaryEffect(SIGTERM));
    }
};

QTEST_GUILESS_MAIN(SignalWatcherTest)
#include "SignalWatcherTest.moc"
