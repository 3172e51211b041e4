// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroFuture>
#include <QFuture>
#include <QPromise>
#include <QString>
#include <QThread>

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <type_traits>

// A named worker thread that runs jobs one at a time, in order. Everything that may block (llama.cpp, the X
// connection, desktop libraries, slow disks) runs on such a queue, so the main thread never waits.
//
// Thread-safe; jobs may call `post` and `run` too. The destructor calls `finish`, so a job must never wait
// for the thread that destroys its queue.
class SerialQueue
{
public:
    // The thread's name, for debuggers; some systems show only its first 15 characters.
    explicit SerialQueue(const QString &name);
    ~SerialQueue();
    SerialQueue(const SerialQueue &) = delete;
    SerialQueue &operator=(const SerialQueue &) = delete;

    // Runs all queued jobs, and those they post, to their end, then joins the thread. Jobs posted later never
    // run. Call it before destroying anything that jobs use.
    void finish();

    // Queues a job without a result. An exception it throws is logged.
    void post(std::function<void()> job);

    // Queues a job and returns the future of its result; an exception is stored in the future. A coroutine
    // that awaits the future resumes on its own thread's event loop.
    template <typename Job>
    auto run(Job job) -> QFuture<std::invoke_result_t<Job>>;

private:
    void work();

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_jobs;
    bool m_stopping = false;
    std::unique_ptr<QThread> m_thread;
};

template <typename Job>
auto SerialQueue::run(Job job) -> QFuture<std::invoke_result_t<Job>>
{
    using Result = std::invoke_result_t<Job>;
    auto promise = std::make_shared<QPromise<Result>>();
    promise->start();
    QFuture<Result> future = promise->future();
    post([promise, job = std::move(job)]() mutable {
        try {
            if constexpr (std::is_void_v<Result>)
                job();
            else
                promise->addResult(job());
        } catch (...) {
            promise->setException(std::current_exception());
        }
        promise->finish();
    });
    return future;
}
