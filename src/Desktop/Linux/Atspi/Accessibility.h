// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"

#include <QCoroTask>
#include <QSet>
#include <QString>

#include <memory>

class AtspiBus;
class AtspiEnvironment;

// The accessibility service of Linux desktops, reached over D-Bus without a blocking call. Main thread.
class AtspiAccessibility : public Accessibility
{
public:
    // `environment` outlives this object and the use of its trees.
    explicit AtspiAccessibility(AtspiEnvironment &environment);
    ~AtspiAccessibility() override;

    // No bus, no switch and no keys are all an answer of no.
    QCoro::Task<bool> isProcessTrusted() override;

    // Nobody is asked on Linux: switches accessibility on, for applications that start from then on.
    bool isTrustGivenByUser() const override { return false; }
    QCoro::Task<void> requestTrust() override;

    QCoro::Task<std::shared_ptr<AccessibilityTree>> applicationTree(qint64 processIdentifier) override;

private:
    AtspiEnvironment &m_environment;
    std::shared_ptr<AtspiBus> m_bus;
    std::shared_ptr<QSet<QString>> m_wokenPages; // of which browsers, by their names on the bus
};
