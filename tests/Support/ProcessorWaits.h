// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <map>

// How long each thread that the main thread may have to wait for has itself waited for a processor so far:
// the other threads of this process, and the X server, which Qt asks now and then. On a busy machine that
// time is part of the main thread's sleep, and no call of ours is to blame. Linux.
class ProcessorWaits
{
public:
    using Duration = std::chrono::nanoseconds;

    // The calling thread is left out, since nobody waits for it. Call from the same thread each time.
    ProcessorWaits();

    // What they have waited, all together, since `earlier`.
    Duration since(const ProcessorWaits &earlier) const;

private:
    std::map<int, Duration> m_waits; // by thread
};
