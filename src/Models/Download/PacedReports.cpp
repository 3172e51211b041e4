// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/PacedReports.h"

#include <utility>

using namespace std::chrono_literals;

PacedReports::PacedReports(std::function<void()> doReport) : m_report(std::move(doReport))
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(50ms);
    QObject::connect(&m_pause, &QTimer::timeout, &m_pause, [this] {
        if (std::exchange(m_isDue, false))
            report();
    });
}

void PacedReports::due()
{
    if (m_pause.isActive())
        m_isDue = true;
    else
        report();
}

void PacedReports::report()
{
    m_pause.start();
    m_report();
}
