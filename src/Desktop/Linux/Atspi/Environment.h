// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QStringList>

#include <cstdint>

// What reading and pressing other applications needs of the rest of the desktop. Applications are identified
// by their processes. Main thread.
class AtspiEnvironment
{
public:
    virtual ~AtspiEnvironment() = default;

    // Whether keys can be sent to other applications, which is a part of being trusted.
    virtual QCoro::Task<bool> canSendKeys() = 0;

    // Gives the focus to the application if it does not have it; asked for before every press. Throws
    // PlatformError when the application is gone.
    virtual QCoro::Task<void> activate(qint64 processIdentifier) = 0;

    // Sends a key, by its macOS virtual key code, to the application, which is in front, and tells whether it
    // is known to have been handled. Throws PlatformError when it cannot be sent.
    virtual QCoro::Task<bool> strikeKey(qint64 processIdentifier, std::uint16_t virtualKey) = 0;

    // The titles of the windows that the user has in front of the application, the foremost first.
    virtual QCoro::Task<QStringList> titlesInFront(qint64 processIdentifier) = 0;
};
