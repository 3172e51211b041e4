// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"

// The computer's own clock, the same on every platform. Main thread.
class SystemClock : public Clock
{
public:
    QDateTime now() const override;
    QCoro::Task<void> sleep(std::chrono::milliseconds duration) override;
};
