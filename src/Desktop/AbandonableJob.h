// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Deadlines.h"

#include <QCoroFuture>
#include <QPromise>
#include <QThread>

#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

// A single job that may get stuck for good in a library that offers no way out (a connection to a server that
// has stopped, a dead network disk). Unlike a BoundedQueue, whose end waits for the job in progress, this
// leaves such a job and its thread behind until the process ends.
namespace AbandonableJob {

inline constexpr std::chrono::milliseconds limit = Deadlines::answer;

// The job's result, nothing when the limit is over; throws what the job throws. The job owns what it uses: it
// may outlive everything else. Called on the main thread; the job runs on a thread of its own with that name.
template <typename Job>
QCoro::Task<std::optional<std::invoke_result_t<Job>>> run(QString name, Job job)
{
    using Result = std::invoke_result_t<Job>;
    const auto promise = std::make_shared<QPromise<Result>>();
    promise->start();
    auto work = [promise, job = std::move(job)]() mutable {
        try {
            promise->addResult(job());
        } catch (...) {
            promise->setException(std::current_exception());
        }
        promise->finish();
    };
    std::unique_ptr<QThread> thread(QThread::create(std::move(work)));
    thread->setObjectName(name);
    thread->start();
    const QFuture<Result> future = promise->future();
    const QFuture<bool> finished = finishedWithin(future, limit);
    if (!co_await finished) {
        QThread *abandoned = thread.release();
        QObject::connect(abandoned, &QThread::finished, abandoned, &QObject::deleteLater);
        co_return std::nullopt;
    }
    thread->wait();
    co_return future.result();
}

} // namespace AbandonableJob
