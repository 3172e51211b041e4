// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <atomic>
#include <utility>

// A worker thread for calls that may wait for other processes, with an autorelease pool per job. The
// destructor waits for the job in progress. Thread: main, except for `isClosing`.
class MacQueue
{
public:
    // As for BoundedQueue.
    MacQueue(const QString &name, const QString &partner) : m_queue(name, partner) {}
    ~MacQueue() { m_isClosing = true; }
    MacQueue(const MacQueue &) = delete;
    MacQueue &operator=(const MacQueue &) = delete;

    // Jobs of many calls should return early once this is true. Any thread.
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
