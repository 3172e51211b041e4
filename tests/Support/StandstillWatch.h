// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include <atomic>
#include <chrono>
#include <functional>
#include <stop_token>
#include <thread>

// Detects when the main thread's event loop stands still because the thread sleeps in a blocking call. Time
// spent running, waiting for a CPU, or waiting for a thread that waits for a CPU does not count, and neither
// does a sleep during which the process's own pages were read from the disk, so a slow or busy machine alone
// is no standstill. Linux. Create and destroy it on the main thread.
class StandstillWatch
{
public:
    using Duration = std::chrono::nanoseconds;

    // The longest permitted sleep: three frames.
    static constexpr std::chrono::milliseconds limit{50};

    // `onStandstill` is called after each sleep over the limit, on another thread.
    explicit StandstillWatch(std::function<void(Duration asleep)> onStandstill = {});
    ~StandstillWatch();
    StandstillWatch(const StandstillWatch &) = delete;
    StandstillWatch &operator=(const StandstillWatch &) = delete;

    // The longest completed sleep.
    std::chrono::milliseconds longest() const
    {
        return std::chrono::duration_cast<std::chrono::milliseconds>(m_longest.load());
    }

private:
    void watch(const std::stop_token &end);
    // How long the main thread slept before it handled a message; nothing if stopped first.
    Duration sleepBeforeAnswer(const std::stop_token &end);

    std::function<void(Duration)> m_onStandstill;
    const int m_mainThread;
    std::atomic<Duration> m_longest = Duration::zero();
    QObject m_receiver; // receives the messages
    std::jthread m_thread;
};
