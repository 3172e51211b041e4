// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTimer>

#include <functional>

// Throttles progress reports to about twenty a second, so that a fast transfer does not flood the main
// thread. The latest state is always reported. Not thread-safe.
class PacedReports
{
public:
    explicit PacedReports(std::function<void()> doReport);

    // Reports now, or once the interval since the last report has passed.
    void due();
    // Cancels a pending report.
    void stop() { m_pause.stop(); }

private:
    void report();

    const std::function<void()> m_report;
    QTimer m_pause;
    bool m_isDue = false;
};
