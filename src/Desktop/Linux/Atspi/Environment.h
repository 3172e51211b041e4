// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Workspace.h"

#include <QCoroTask>
#include <QStringList>

#include <cstdint>

// Titles that tell an application's windows apart: AT-SPI knows processes, but neither the order of windows
// nor which application of the process they belong to.
struct AtspiTitles
{
    QStringList inFront; // see WindowSnapshot::titlesInFront
    QStringList foreign; // see WindowSnapshot::foreignTitles
};

// What AT-SPI needs from the other desktop services. Thread: main.
class AtspiEnvironment
{
public:
    virtual ~AtspiEnvironment() = default;

    // Whether keys can be sent to other applications, a part of `isProcessTrusted`.
    virtual QCoro::Task<bool> canSendKeys() = 0;

    // Gives the application the focus if it doesn't have it; called before every press. Throws PlatformError
    // if the application no longer exists.
    virtual QCoro::Task<void> activate(RunningApplication application) = 0;

    // Sends a key (a macOS virtual key code) to the application, which must be frontmost. Returns whether it
    // has confirmed handling the key. Throws PlatformError if the key can't be sent.
    virtual QCoro::Task<bool> strikeKey(RunningApplication application, std::uint16_t virtualKey) = 0;

    virtual QCoro::Task<AtspiTitles> titles(RunningApplication application) = 0;
};
