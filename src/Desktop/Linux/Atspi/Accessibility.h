// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"

#include <QCoroTask>
#include <QSet>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>

class AtspiApplication;
class AtspiBus;
class AtspiCache;

// The accessibility service of Linux desktops, reached over D-Bus without a blocking call. Main thread.
class AtspiAccessibility : public Accessibility
{
public:
    struct Environment
    {
        // Whether keys can be sent to other applications, which is a part of being trusted.
        std::function<QCoro::Task<bool>()> canSendKeys;
        // Gives the focus to the application with this process if it does not have it, before its control is
        // pressed. Throws PlatformError when it is gone.
        std::function<QCoro::Task<void>(qint64 processIdentifier)> activate;
        // The titles of the windows that the user has in front of that application, the foremost first.
        std::function<QCoro::Task<QStringList>(qint64 processIdentifier)> titlesInFront;
        // Sends a key, by its macOS virtual key code, to the application with this process, which is in
        // front, and tells whether it is known to have been handled. Throws PlatformError when it cannot be
        // sent.
        std::function<QCoro::Task<bool>(qint64 processIdentifier, std::uint16_t virtualKey)> strikeKey;
    };

    explicit AtspiAccessibility(Environment environment);
    ~AtspiAccessibility() override;

    // No bus, no switch and no keys are all an answer of no.
    QCoro::Task<bool> isProcessTrusted() override;

    // Nobody is asked on Linux: switches accessibility on, for applications that start from then on.
    bool isTrustGivenByUser() const override { return false; }
    QCoro::Task<void> requestTrust() override;

    QCoro::Task<std::shared_ptr<AccessibilityTree>> applicationTree(qint64 processIdentifier) override;

private:
    Environment m_environment;
    std::shared_ptr<AtspiBus> m_bus;
    std::shared_ptr<QSet<QString>> m_wokenPages; // of which browsers, by their names on the bus
};
