// SPDX-License-Identifier: Apache-2.0
#include "Base/SerialQueue.h"
#include "Support/Awaited.h"

#include <QCoroTask>
#include <QSemaphore>
#include <QTest>

#include <atomic>
#include <new>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<int> sumOfTwoJobs(SerialQueue &queue)
{
    const auto first = queue.run([] { return 20; });
    const int twenty = co_await first;
    const auto second = queue.run([] { return 22; });
    const int more = co_await second;
    co_return twenty + more;
}

QCoro::Task<QThread *> threadAfterAJob(SerialQueue &queue)
{
    const auto job = queue.run([] {});
    co_await job;
    co_return QThread::currentThread();
}

template <typename Result>
QCoro::Task<QString> failureOf(QFuture<Result> future)
{
    try {
        co_await future;
    } catch (const std::runtime_error &error) {
        co_return QString::fromUtf8(error.what());
    }
    co_return u"none"_s;
}

} // namespace

class SerialQueueTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void jobsRunInOrderAndOneAtATime();
    void jobsRunOnTheNamedThread();
    void resultsComeBack();
    void theCallerResumesOnItsOwnThread();
    void anExceptionOfAJobReachesTheCaller();
    void theQueueGoesOnAfterAFailure();
    void theQueueGoesOnAfterAFailureThatNobodyWaitsFor();
    void destructionFinishesQueuedJobs();
    void finishingRunsJobsPostedByJobs();
    void aJobIsDestroyedBeforeTheNextOneStarts();
    void manyThreadsMayPost();
};

void SerialQueueTest::jobsRunInOrderAndOneAtATime()
{
    QList<int> order;
    std::atomic<int> active = 0;
    std::atomic<bool> overlapped = false;
    {
        SerialQueue queue(u"test"_s);
        for (int i = 0; i < 1000; ++i) {
            queue.post([&order, &active, &overlapped, i] {
                if (++active != 1)
                    overlapped = true;
                order.append(i);
                --active;
            });
        }
    }
    QVERIFY(!overlapped);
    QCOMPARE(order.size(), 1000);
    QVERIFY(std::is_sorted(order.begin(), order.end()));
}

void SerialQueueTest::jobsRunOnTheNamedThread()
{
    SerialQueue queue(u"test.queue"_s);
    auto name = queue.run([] { return QThread::currentThread()->objectName(); });
    QCOMPARE(name.result(), u"test.queue"_s);
    auto thread = queue.run([] { return QThread::currentThread(); });
    QVERIFY(thread.result() != QThread::currentThread());
}

void SerialQueueTest::resultsComeBack()
{
    SerialQueue queue(u"test"_s);
    QCOMPARE(Awaited::result(sumOfTwoJobs(queue)), 42);
}

void SerialQueueTest::theCallerResumesOnItsOwnThread()
{
    SerialQueue queue(u"test"_s);
    QCOMPARE(Awaited::result(threadAfterAJob(queue)), QThread::currentThread());
}

void SerialQueueTest::anExceptionOfAJobReachesTheCaller()
{
    SerialQueue queue(u"test"_s);
    const auto nothing = queue.run([] { throw std::runtime_error("nothing to give"); });
    QCOMPARE(Awaited::result(failureOf(nothing)), u"nothing to give"_s);
    const auto number = queue.run([]() -> int { throw std::runtime_error("no number"); });
    QCOMPARE(Awaited::result(failureOf(number)), u"no number"_s);
}

void SerialQueueTest::theQueueGoesOnAfterAFailure()
{
    SerialQueue queue(u"test"_s);
    const auto failure = queue.run([] { throw std::runtime_error("broken"); });
    QCOMPARE(Awaited::result(failureOf(failure)), u"broken"_s);
    QCOMPARE(Awaited::result(sumOfTwoJobs(queue)), 42);
}

void SerialQueueTest::theQueueGoesOnAfterAFailureThatNobodyWaitsFor()
{
    SerialQueue queue(u"test.queue"_s);
    QTest::ignoreMessage(QtCriticalMsg, "A job of \"test.queue\" failed: std::bad_alloc");
    queue.post([] { throw std::bad_alloc(); });
    QCOMPARE(Awaited::result(sumOfTwoJobs(queue)), 42);
}

void SerialQueueTest::destructionFinishesQueuedJobs()
{
    QSemaphore gate;
    int finished = 0;
    {
        SerialQueue queue(u"test"_s);
        queue.post([&gate] { gate.acquire(); });
        for (int i = 0; i < 10; ++i)
            queue.post([&finished] { ++finished; });
        gate.release();
    }
    QCOMPARE(finished, 10);
}

void SerialQueueTest::finishingRunsJobsPostedByJobs()
{
    const auto queue = std::make_unique<SerialQueue>(u"test.finish"_s);
    QStringList done;
    queue->post([&] {
        QThread::msleep(20); // the finishing has begun by then
        queue->post([&] {
            done.append(u"second"_s);
            queue->post([&] { done.append(u"third"_s); });
        });
        done.append(u"first"_s);
    });
    queue->finish();
    QCOMPARE(done, QStringList({u"first"_s, u"second"_s, u"third"_s}));
}

void SerialQueueTest::aJobIsDestroyedBeforeTheNextOneStarts()
{
    SerialQueue queue(u"test"_s);
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = held;
    queue.post([held] {});
    held.reset();
    auto isGone = queue.run([watched] { return watched.expired(); });
    QVERIFY(isGone.result());
}

void SerialQueueTest::manyThreadsMayPost()
{
    int sum = 0;
    {
        SerialQueue queue(u"test"_s);
        QList<QThread *> threads;
        for (int i = 0; i < 4; ++i) {
            threads.append(QThread::create([&queue, &sum] {
                for (int j = 0; j < 250; ++j)
                    queue.post([&sum] { ++sum; });
            }));
            threads.last()->start();
        }
        for (QThread *thread : std::as_const(threads))
            thread->wait();
        qDeleteAll(threads);
    }
    QCOMPARE(sum, 1000);
}

QTEST_GUILESS_MAIN(SerialQueueTest)
#include "SerialQueueTest.moc"
