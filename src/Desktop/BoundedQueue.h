// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/SerialQueue.h"
#include "Desktop/Deadlines.h"
#include "Desktop/PlatformError.h"

#include <QCoroTask>
#include <QFutureWatcher>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <memory>
#include <type_traits>
#include <utility>

// Resolves to true when `future` finishes, or to false after `limit`. Call it on a thread with an event loop.
template <typename Result>
QFuture<bool> finishedWithin(const QFuture<Result> &future, std::chrono::milliseconds limit)
{
    auto promise = std::make_shared<QPromise<bool>>();
    promise->start();
    auto *watcher = new QFutureWatcher<Result>;
    const auto settle = [promise, watcher](bool finished) {
        if (promise->future().isFinished())
            return;
        promise->addResult(finished);
        promise->finish();
        watcher->deleteLater();
    };
    QObject::connect(watcher, &QFutureWatcherBase::finished, watcher, [settle] { settle(true); });
    QTimer::singleShot(limit, watcher, [settle] { settle(false); });
    watcher->setFuture(future);
    return promise->future();
}

// A worker thread with a timeout per job. On timeout the caller stops waiting, and a job that is still queued
// never starts. Call `run` on the main thread.
class BoundedQueue
{
public:
    // `name` is the thread's name; `partner` ("The X server") is the subject of the timeout message.
    BoundedQueue(const QString &name, const QString &partner)
        : m_lateSentence(QStringLiteral("%1 doesn't answer.").arg(partner)), m_queue(name)
    {
    }

    // Returns the job's result. Rethrows its exceptions; throws PlatformError on timeout.
    template <typename Job>
    QCoro::Task<std::invoke_result_t<Job>> run(Job job, std::chrono::milliseconds limit = standardLimit)
    {
        const auto abandoned = std::make_shared<std::atomic_bool>(false);
        const QString sentence = m_lateSentence;
        auto guarded = [abandoned, sentence, job = std::move(job)]() mutable {
            if (*abandoned)
                throw PlatformError(sentence);
            return job();
        };
        const auto future = m_queue.run(std::move(guarded));
        const QFuture<bool> finished = finishedWithin(future, limit);
        if (!co_await finished) {
            *abandoned = true;
            throw PlatformError(sentence);
        }
        co_return co_await future;
    }

    // Queues a job without waiting for it.
    void post(std::function<void()> job) { m_queue.post(std::move(job)); }

    static constexpr std::chrono::milliseconds standardLimit = Deadlines::answer;

private:
    QString m_lateSentence;
    SerialQueue m_queue;
};
