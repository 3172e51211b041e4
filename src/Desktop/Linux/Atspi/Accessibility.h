// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"
#include "Desktop/Linux/Atspi/Toolkits.h"

#include <QCoroTask>
#include <QSet>
#include <QString>

#include <memory>

class AtspiBus;
class AtspiEnvironment;

// Accessibility through AT-SPI, with asynchronous D-Bus calls only. Thread: main.
class AtspiAccessibility : public Accessibility
{
public:
    // `environment` must outlive this object and its trees.
    explicit AtspiAccessibility(AtspiEnvironment &environment);
    ~AtspiAccessibility() override;

    // False without a bus, with accessibility disabled, or if keys can't be sent.
    QCoro::Task<bool> isProcessTrusted() override;

    // Enables accessibility without a prompt; it affects only applications started afterwards.
    bool isTrustGivenByUser() const override { return false; }
    QCoro::Task<void> requestTrust() override;

    QCoro::Task<std::shared_ptr<AccessibilityTree>> applicationTree(RunningApplication application) override;

    // The toolkit of the application; Other if it isn't registered or doesn't respond. Never throws.
    QCoro::Task<AtspiToolkit> toolkitOf(RunningApplication application);

private:
    AtspiEnvironment &m_environment;
    std::shared_ptr<AtspiBus> m_bus;
    std::shared_ptr<QSet<QString>> m_wokenPages; // unique bus names of browsers after wakePages
};
