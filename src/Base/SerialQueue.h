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

// One named worker thread that carries out jobs in the order in which they were handed in, one at a time.
// Everything that may block (llama.cpp, the X connection, the desktop's own libraries, slow disks) runs on
// such a queue, so that the main thread never waits.
//
// `post` and `run` may be called from any thread, also by a job. The destructor finishes (see `finish`): a
// job must therefore never wait for the thread that destroys its queue.
class SerialQueue
{
public:
    // `name` names the thread for debuggers; some systems show its first 15 characters only.
    explicit SerialQueue(const QString &name);
    ~SerialQueue();
    SerialQueue(const SerialQueue &) = delete;
    SerialQueue &operator=(const SerialQueue &) = delete;

    // Finishes the job in progress, the ones already queued and those that they hand in, then joins the
    // thread. What is handed in afterwards is never carried out. For owners whose jobs use what goes before
    // the queue.
    void finish();

    // Hands in a job whose end nobody waits for. What it throws ends the job, and is said in the log.
    void post(std::function<void()> job);

    // Hands in a job and gives the future of its result; an exception thrown by the job is thrown to whoever
    // reads that future. Awaiting it resumes the awaiting coroutine on its own thread's event loop.
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
