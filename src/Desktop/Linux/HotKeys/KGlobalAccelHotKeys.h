// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Shell/HotKeys.h"

// Hot keys by KGlobalAccel, the service of Plasma on the session bus, where the user can change them. Without
// the service there are none; it is never started. Thread: main.
class KGlobalAccelHotKeys : public HotKeys
{
public:
    static constexpr auto serviceName = QLatin1StringView("org.kde.kglobalaccel");

    QCoro::Task<std::shared_ptr<HotKeyReference>> registerHotKey(std::uint16_t virtualKey,
                                                                 HotKeyModifiers modifiers,
                                                                 HotKeyIdentifier identifier,
                                                                 std::function<void()> pressed) override;

    // What the service says about a hot key, without changing anything.
    struct Standing
    {
        bool isOffered = false; // whether the service answers
        bool hasKey = false;    // whether it is registered with a key, the wished or a chosen one
        QString owner;          // the program that the wished key belongs to, cleaned; empty if it is free
    };
    // Never throws.
    QCoro::Task<Standing> standing(std::uint16_t virtualKey, HotKeyModifiers modifiers,
                                   HotKeyIdentifier identifier);

private:
    // Asks the service, and returns the values of its reply; none without a service.
    QCoro::Task<QVariantList> ask(QString method, QVariantList arguments);

    BoundedQueue m_bus{QStringLiteral("orvane.hotkeys"), QStringLiteral("The session bus")};
};
