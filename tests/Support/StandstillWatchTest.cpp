// SPDX-License-Identifier: Apache-2.0
#include "Support/StandstillWatch.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

using namespace std::chrono_literals;

class StandstillWatchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anIdleEventLoopIsNoStandstill();
    void aCallThatSleepsIs();
    void severalShortOnesAreNot();
    void workIsNot();
};

void StandstillWatchTest::anIdleEventLoopIsNoStandstill()
{
    const StandstillWatch watch;
    QTest::qWait(300);
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
}

void StandstillWatchTest::aCallThatSleepsIs()
{
    std::atomic<int> reports = 0;
    const StandstillWatch watch([&reports](StandstillWatch::Duration) { ++reports; });
    // A busy machine may let the watch itself wait until it is over.
    QTimer timer;
    timer.callOnTimeout(&timer, [] { std::this_thread::sleep_for(200ms); });
    timer.start(50);
    QTRY_VERIFY_WITH_TIMEOUT(watch.longest() > StandstillWatch::limit, 60'000);
    QVERIFY(watch.longest() <= 10s);
    QVERIFY(reports.load() >= 1);
}

void StandstillWatchTest::severalShortOnesAreNot()
{
    const StandstillWatch watch;
    QTimer timer;
    timer.callOnTimeout(&timer, [] { std::this_thread::sleep_for(10ms); });
    timer.start(30);
    QTest::qWait(500);
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
}

// However slow the machine is.
void StandstillWatchTest::workIsNot()
{
    const StandstillWatch watch;
    bool isDone = false;
    QTimer::singleShot(20, this, [&isDone] {
        QElapsedTimer timer;
        timer.start();
        while (!timer.hasExpired(200)) {
        }
        isDone = true;
    });
    QTRY_VERIFY(isDone);
    QTest::qWait(50);
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
}

QTEST_GUILESS_MAIN(StandstillWatchTest)
#include "StandstillWatchTest.moc"
