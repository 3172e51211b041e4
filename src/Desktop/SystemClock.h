// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"

// The system's clock, on every platform. Thread: main.
class SystemClock : public Clock
{
public:
    QDateTime now() const override;
    QCoro::Task<void> sleep(std::chrono::milliseconds duration) override;
};
