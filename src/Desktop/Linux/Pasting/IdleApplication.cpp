// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Pasting/IdleApplication.h"

#include "Desktop/Linux/Processes/RunningProcess.h"

#include <QElapsedTimer>

using namespace std::chrono_literals;

namespace {

constexpr qint64 patience = 1000; // ms
constexpr int idleLooks = 3;

} // namespace

QCoro::Task<void> IdleApplication::wait(qint64 process)
{
    QElapsedTimer elapsed;
    elapsed.start();
    for (int looks = 0; looks < idleLooks && !elapsed.hasExpired(patience);) {
        const auto look = [process] { return isBusyApplication(process); };
        const bool isBusy = co_await m_queue.run(look);
        looks = isBusy ? 0 : looks + 1;
        co_await m_clock.sleep(5ms);
    }
}
