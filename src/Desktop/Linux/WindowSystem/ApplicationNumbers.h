// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QString>

// Negative numbers that tell applications apart if their processes are unknown (DesktopWindow::process).
class ApplicationNumbers
{
public:
    // Always the same number for the same application identifier, such as a Wayland app_id.
    qint64 of(const QString &applicationIdentifier)
    {
        const auto known = m_numbers.constFind(applicationIdentifier);
        return known == m_numbers.constEnd() ? *m_numbers.insert(applicationIdentifier, -1 - m_numbers.size())
                                             : *known;
    }

private:
    QHash<QString, qint64> m_numbers;
};
