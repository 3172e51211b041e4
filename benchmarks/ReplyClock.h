// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>

#include <algorithm>

// Times one reply from its request: the first token, which includes prompt evaluation, separately from the
// rest. Call `token` for each sampled token. Not thread-safe.
class ReplyClock
{
public:
    ReplyClock() { m_timer.start(); }

    void token()
    {
        m_last = m_timer.nsecsElapsed();
        if (m_tokens++ == 0)
            m_first = m_last;
    }

    int tokens() const { return m_tokens; }
    double secondsToFirstToken() const { return inSeconds(m_first); }
    // Seconds from the first token to the last.
    double seconds() const { return inSeconds(m_last - m_first); }
    double secondsPerToken() const { return seconds() / std::max(m_tokens - 1, 1); }

private:
    static double inSeconds(qint64 nanoseconds) { return static_cast<double>(nanoseconds) * 1e-9; }

    QElapsedTimer m_timer;
    qint64 m_first = 0; // in nanoseconds
    qint64 m_last = 0;
    int m_tokens = 0;
};
