// SPDX-License-Identifier: Apache-2.0
#include "Desktop/SystemClock.h"

#include <QCoroTimer>
#include <QTimer>

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

QCoro::Task<void> SystemClock::sleep(std::chrono::milliseconds duration)
{
    QTimer timer;
    timer.setSingleShot(true);
    // A coarse timer may be up to 5 % off; actions require exact waits.
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(duration);
    co_await timer;
}
