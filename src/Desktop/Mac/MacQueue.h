// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <atomic>
#include <utility>

// A worker thread for calls that may wait for other processes, with a pool for what the frameworks leave to
// be released later. `run` is called on the main thread. The destructor waits for the job in progress.
class MacQueue
{
public:
    // As for BoundedQueue.
    MacQueue(const QString &name, const QString &partner) : m_queue(name, partner) {}
    ~MacQueue() { m_isClosing = true; }
    MacQueue(const MacQueue &) = delete;
    MacQueue &operator=(const MacQueue &) = delete;

    // For jobs of many calls, which end early then. Any thread.
    bool isClosing() const { return m_isClosing; }

    // As for BoundedQueue.
    template <typename Job>
    auto run(Job job, std::chrono::milliseconds limit = BoundedQueue::standardLimit)
    {
        auto pooled = [job = std::move(job)]() mutable {
            const QMacAutoReleasePool pool;
            return job();
        };
        return m_queue.run(std::move(pooled), limit);
    }

private:
    std::atomic_bool m_isClosing = false;
    BoundedQueue m_queue;
};
