// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QDateTime>

#include <chrono>

// Time, as the actions use it: to name a screenshot and to let an application settle. Main thread.
class Clock
{
public:
    virtual ~Clock() = default;

    // The user's local time.
    virtual QDateTime now() const = 0;

    // Suspends the caller for that long; nothing cuts it short.
    virtual QCoro::Task<void> sleep(std::chrono::milliseconds duration) = 0;
};
