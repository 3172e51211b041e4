// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"

#include <QCoroTask>
#include <QString>

#include <functional>

// Brings an application to the front, by the means that the system offers. Main thread. Takes nothing of
// macOS.
namespace Foreground {

struct Means
{
    std::function<bool()> hasKeys; // whether the application has the keyboard now
    std::function<bool()> request; // asks for it; false when that is refused at once
    // Has the system open the application as if the user did; throws PlatformError when it cannot. Empty
    // where there is nothing to open.
    std::function<QCoro::Task<void>()> open;
};

// Asks first, and has it opened where nothing comes of that within a time limit. Throws PlatformError when
// the application, called `name` in its sentence, is still not in front then.
QCoro::Task<void> bring(QString name, Means means, Clock &clock);

} // namespace Foreground
