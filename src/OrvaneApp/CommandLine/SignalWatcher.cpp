// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/SignalWatcher.h"

#include <array>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array watchedSignals{SIGINT, SIGTERM};

// A signal handler may call async-signal-safe functions only; writing here wakes the event loop.
volatile std::sig_atomic_t writeEnd = -1;

extern "C" void noteSignal(int)
{
    const char mark = 1;
    [[maybe_unused]] const ssize_t written = write(writeEnd, &mark, sizeof mark);
}

void setUp(int descriptor)
{
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    fcntl(descriptor, F_SETFL, O_NONBLOCK);
}

} // namespace

SignalWatcher::SignalWatcher(QObject *parent) : QObject(parent)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        qFatal("No pipe can be opened.");
    for (const int end : ends)
        setUp(end);
    m_readEnd = ends[0];
    writeEnd = ends[1];

    m_notifier = std::make_unique<QSocketNotifier>(m_readEnd, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        char mark = 0;
        while (read(m_readEnd, &mark, sizeof mark) > 0)
            Q_EMIT interrupted();
    });

    struct sigaction action = {};
    action.sa_handler = noteSignal;
    // SA_RESETHAND: a second signal has its default effect, even if the program hangs.
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    for (const int number : watchedSignals)
        sigaction(number, &action, nullptr);
}

SignalWatcher::~SignalWatcher()
{
    for (const int number : watchedSignals)
        std::signal(number, SIG_DFL);
    m_notifier.reset();
    close(m_readEnd);
    close(writeEnd);
}
