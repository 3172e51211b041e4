// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include <atomic>
#include <chrono>
#include <functional>
#include <stop_token>
#include <thread>

// Notices when the main thread's event loop stands still because the thread sleeps elsewhere: in a call that
// waits for another program. Time in which the thread works, or waits for a processor, does not count, nor
// that in which a thread waits for one that it may be waiting for: a slow or busy machine alone is no
// standstill. Linux. To be made and destroyed on the main thread.
class StandstillWatch
{
public:
    using Duration = std::chrono::nanoseconds;

    // What no call may take: three frames.
    static constexpr std::chrono::milliseconds limit{50};

    // `onStandstill` is called for each one beyond the limit, once it is over, on a thread of its own.
    explicit StandstillWatch(std::function<void(Duration asleep)> onStandstill = {});
    ~StandstillWatch();
    StandstillWatch(const StandstillWatch &) = delete;
    StandstillWatch &operator=(const StandstillWatch &) = delete;

    // The longest one so far, that in progress left out.
    std::chrono::milliseconds longest() const
    {
        return std::chrono::duration_cast<std::chrono::milliseconds>(m_longest.load());
    }

private:
    void watch(const std::stop_token &end);
    // How long the main thread slept until it came to handle a message; nothing when the end came first.
    Duration sleepBeforeAnswer(const std::stop_token &end);

    std::function<void(Duration)> m_onStandstill;
    const int m_mainThread;
    std::atomic<Duration> m_longest = Duration::zero();
    QObject m_receiver; // of the messages
    std::jthread m_thread;
};
