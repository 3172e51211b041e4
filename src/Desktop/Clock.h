// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QDateTime>

#include <chrono>

// The time source of the actions: dates screenshots and waits for applications to settle. Thread: main.
class Clock
{
public:
    virtual ~Clock() = default;

    // The user's local time.
    virtual QDateTime now() const = 0;

    // Suspends the caller for the whole duration; it can't be cancelled.
    virtual QCoro::Task<void> sleep(std::chrono::milliseconds duration) = 0;
};
