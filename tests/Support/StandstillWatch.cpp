// SPDX-License-Identifier: Apache-2.0
#include "Support/StandstillWatch.h"

#include "Support/ProcessorWaits.h"

#include <QSemaphore>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <memory>
#include <string>
#include <utility>

namespace {

using Duration = StandstillWatch::Duration;

constexpr std::chrono::milliseconds betweenMessages{5};

// Time stolen by a virtual machine's host, over all CPUs. The kernel deducts it from threads' running time.
Duration stolenSoFar()
{
    std::ifstream counters("/proc/stat");
    std::string name;
    // In ticks: user, nice, system, idle, iowait, irq, softirq, steal.
    std::array<Duration::rep, 8> ticks{};
    counters >> name;
    for (Duration::rep &count : ticks)
        counters >> count;
    const Duration::rep perTick = Duration(std::chrono::seconds(1)).count() / ::sysconf(_SC_CLK_TCK);
    return Duration(ticks.back() * perTick);
}

// How often the process has waited for one of its pages, such as code that the kernel had dropped.
long pagesReadSoFar()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_majflt;
}

// The kernel counts how long a thread ran and how long it waited to run. The remaining time it slept or its
// CPU was stolen.
Duration sleptSoFar(int thread)
{
    std::ifstream counters("/proc/self/task/" + std::to_string(thread) + "/schedstat");
    Duration::rep ran = 0;
    Duration::rep waited = 0;
    counters >> ran >> waited;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<Duration>(now) - Duration(ran) - Duration(waited) - stolenSoFar();
}

} // namespace

StandstillWatch::StandstillWatch(std::function<void(Duration)> onStandstill)
    : m_onStandstill(std::move(onStandstill)), m_mainThread(::gettid()),
      m_thread([this](const std::stop_token &end) { watch(end); })
{
}

StandstillWatch::~StandstillWatch()
{
    m_thread.request_stop();
    m_thread.join();
}

void StandstillWatch::watch(const std::stop_token &end)
{
    while (!end.stop_requested()) {
        const Duration asleep = sleepBeforeAnswer(end);
        if (asleep > m_longest.load())
            m_longest = asleep;
        if (asleep > limit && m_onStandstill)
            m_onStandstill(asleep);
        std::this_thread::sleep_for(betweenMessages);
    }
}

// Checks both ends so that only the main thread's delay counts: this thread may itself wait for a CPU, before
// sending its message and after the answer.
StandstillWatch::Duration StandstillWatch::sleepBeforeAnswer(const std::stop_token &end)
{
    struct Answer
    {
        QSemaphore isThere;
        Duration slept{};
        long pagesRead = 0;
    };
    const auto answer = std::make_shared<Answer>();
    const auto reply = [answer, mainThread = m_mainThread] {
        answer->slept = sleptSoFar(mainThread);
        answer->pagesRead = pagesReadSoFar();
        answer->isThere.release();
    };
    QMetaObject::invokeMethod(&m_receiver, reply, Qt::QueuedConnection);
    const ProcessorWaits waitsBefore;
    const long pagesBefore = pagesReadSoFar();
    const Duration before = sleptSoFar(m_mainThread);
    constexpr int patience = 10; // ms
    while (!answer->isThere.tryAcquire(1, patience))
        if (end.stop_requested())
            return Duration::zero();
    if (answer->pagesRead != pagesBefore)
        return Duration::zero();
    return answer->slept - before - ProcessorWaits().since(waitsBefore);
}
