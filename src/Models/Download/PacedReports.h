// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTimer>

#include <functional>

// Reports how a fast transfer goes without flooding the main thread: some twenty times a second, the last
// time for what came last. Lives on one thread.
class PacedReports
{
public:
    explicit PacedReports(std::function<void()> doReport);

    // There is something to report: now, or when the pause after the last report is over.
    void due();
    // Nothing is reported any more.
    void stop() { m_pause.stop(); }

private:
    void report();

    const std::function<void()> m_report;
    QTimer m_pause;
    bool m_isDue = false;
};
