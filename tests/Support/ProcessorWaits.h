// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <map>

// Time that other threads of this process and the X server have spent runnable but waiting for a CPU. The
// main thread may be waiting for them, so on a busy machine this time is part of its sleep. Linux.
class ProcessorWaits
{
public:
    using Duration = std::chrono::nanoseconds;

    // Omits the calling thread. Call from the same thread each time.
    ProcessorWaits();

    // The sum of all waits since `earlier`.
    Duration since(const ProcessorWaits &earlier) const;

private:
    std::map<int, Duration> m_waits; // by thread id
};
