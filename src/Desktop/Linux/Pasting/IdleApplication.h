// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Clock.h"

// Waits until an application has handled what it has got. `clock` must outlive this object. Thread: main.
class IdleApplication
{
public:
    explicit IdleApplication(Clock &clock) : m_clock(clock) {}

    // Returns when the application with this process has nothing to do, or after a second: some, such as
    // video players, are never idle.
    QCoro::Task<void> wait(qint64 process);

private:
    Clock &m_clock;
    BoundedQueue m_queue{QStringLiteral("desktop.idle"), QStringLiteral("The process list")};
};
