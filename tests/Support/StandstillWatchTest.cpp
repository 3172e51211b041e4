// SPDX-License-Identifier: Apache-2.0
#include "Support/StandstillWatch.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSemaphore>
#include <QTemporaryFile>
#include <QTest>
#include <QTimer>

#include <fcntl.h>
#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

#include <ctime>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class StandstillWatchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anIdleEventLoopIsNoStandstill();
    void aSleepingCallIsAStandstill();
    void shortSleepsAreNoStandstill();
    void workIsNoStandstill();
    void waitingForAPreemptedThreadIsNoStandstill();
    void waitingForPagesFromTheDiskIsNoStandstill();
};

void StandstillWatchTest::anIdleEventLoopIsNoStandstill()
{
    const StandstillWatch watch;
    QTest::qWait(300);
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
}

void StandstillWatchTest::aSleepingCallIsAStandstill()
{
    std::atomic<int> reports = 0;
    const StandstillWatch watch([&reports](StandstillWatch::Duration) { ++reports; });
    // On a busy machine the watch itself may be delayed until the sleep is over.
    QTimer timer;
    timer.callOnTimeout(&timer, [] { std::this_thread::sleep_for(200ms); });
    timer.start(50);
    QTRY_VERIFY_WITH_TIMEOUT(watch.longest() > StandstillWatch::limit, 60'000);
    QVERIFY(watch.longest() <= 10s);
    QVERIFY(reports.load() >= 1);
}

void StandstillWatchTest::shortSleepsAreNoStandstill()
{
    const StandstillWatch watch;
    QTimer timer;
    timer.callOnTimeout(&timer, [] { std::this_thread::sleep_for(10ms); });
    timer.start(30);
    QTest::qWait(500);
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
}

// However slow the machine is.
void StandstillWatchTest::workIsNoStandstill()
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

// A busy machine, simulated: another thread occupies the only CPU that the awaited thread may use.
void StandstillWatchTest::waitingForAPreemptedThreadIsNoStandstill()
{
    const auto useFirstProcessor = [] {
        cpu_set_t processors;
        CPU_ZERO(&processors);
        CPU_SET(0, &processors);
        return ::sched_setaffinity(0, sizeof processors, &processors) == 0;
    };
    std::atomic<bool> isPlaced = true;
    const std::jthread busy([&](const std::stop_token &end) {
        isPlaced = isPlaced && useFirstProcessor();
        while (!end.stop_requested()) {
        }
    });
    QSemaphore isWorkDone;
    const std::jthread inTheBackground([&](const std::stop_token &end) {
        const sched_param none{};
        isPlaced = isPlaced && useFirstProcessor() && ::sched_setscheduler(0, SCHED_IDLE, &none) == 0;
        timespec used{};
        while (::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used) == 0 && used.tv_nsec < 3'000'000) {
        }
        isWorkDone.release();
        while (!end.stop_requested())
            std::this_thread::sleep_for(10ms);
    });
    const StandstillWatch watch;
    QElapsedTimer timer;
    bool isDone = false;
    QTimer::singleShot(20, this, [&] {
        timer.start();
        isWorkDone.acquire();
        isDone = timer.hasExpired(2 * StandstillWatch::limit.count());
    });
    QTRY_VERIFY_WITH_TIMEOUT(isDone, 60'000);
    QTest::qWait(50);
    QVERIFY(isPlaced);
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
}

// A slow disk, simulated: besides the sleep, pages that are not in memory are touched.
void StandstillWatchTest::waitingForPagesFromTheDiskIsNoStandstill()
{
    constexpr qsizetype size = 4 << 20;
    QTemporaryFile file(QDir::currentPath() + u"/StandstillWatchTest-XXXXXX"_s);
    QVERIFY(file.open() && file.write(QByteArray(size, 'x')) == size && file.flush());
    QVERIFY(::fsync(file.handle()) == 0);
    QVERIFY(::posix_fadvise(file.handle(), 0, 0, POSIX_FADV_DONTNEED) == 0);
    const uchar *content = file.map(0, size);
    QVERIFY(content);
    rusage before{};
    rusage after{};
    const StandstillWatch watch;
    bool isDone = false;
    QTimer::singleShot(20, this, [&] {
        std::this_thread::sleep_for(200ms);
        ::getrusage(RUSAGE_SELF, &before);
        for (qsizetype i = 0; i < size; i += 4096)
            isDone = content[i] == 'x';
        ::getrusage(RUSAGE_SELF, &after);
    });
    QTRY_VERIFY(isDone);
    QTest::qWait(50);
    if (after.ru_majflt == before.ru_majflt)
        QSKIP("This file system keeps its pages in memory.");
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
}

QTEST_GUILESS_MAIN(StandstillWatchTest)
#include "StandstillWatchTest.moc"
