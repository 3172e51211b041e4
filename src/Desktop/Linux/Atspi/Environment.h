// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QStringList>

#include <cstdint>

// What AT-SPI needs from the other desktop services. Applications are identified by process. Thread: main.
class AtspiEnvironment
{
public:
    virtual ~AtspiEnvironment() = default;

    // Whether keys can be sent to other applications, a part of `isProcessTrusted`.
    virtual QCoro::Task<bool> canSendKeys() = 0;

    // Gives the application the focus if it doesn't have it; called before every press. Throws PlatformError
    // if the application no longer exists.
    virtual QCoro::Task<void> activate(qint64 processIdentifier) = 0;

    // Sends a key (a macOS virtual key code) to the application, which must be frontmost. Returns whether it
    // has confirmed handling the key. Throws PlatformError if the key can't be sent.
    virtual QCoro::Task<bool> strikeKey(qint64 processIdentifier, std::uint16_t virtualKey) = 0;

    // The titles of the application's front windows, frontmost first (see X11Snapshot::titlesInFront).
    virtual QCoro::Task<QStringList> titlesInFront(qint64 processIdentifier) = 0;
};
