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

// Runs one blocking job that may never return (a connection to a hung server, a dead network disk). On
// timeout the job and its thread are abandoned until the process exits; the destructor of a BoundedQueue
// would wait for the job in progress.
namespace AbandonableJob {

inline constexpr std::chrono::milliseconds limit = Deadlines::answer;

// Runs `job` on a new thread called `name`. Returns its result, or nothing on timeout; rethrows its
// exceptions. The job must own everything it uses, since it may outlive the caller. Thread: main.
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
