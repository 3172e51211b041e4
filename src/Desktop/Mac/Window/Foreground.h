// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"

#include <QCoroTask>
#include <QString>

#include <functional>

// Brings an application to the front. Independent of macOS. Thread: main.
namespace Foreground {

struct Means
{
    std::function<bool()> hasKeys; // whether the application has the keyboard focus
    std::function<bool()> request; // requests activation; false if refused at once
    // Opens the application through the system, as the user would; throws PlatformError on failure. Null if
    // there is nothing to open.
    std::function<QCoro::Task<void>()> open;
};

// Requests activation; if that has no effect within a time limit, opens the application. Throws PlatformError
// if it still isn't in front; `name` is for that message.
QCoro::Task<void> bring(QString name, Means means, Clock &clock);

} // namespace Foreground
