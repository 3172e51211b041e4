// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/Atspi/Bulk.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QList>

#include <chrono>
#include <memory>

// How much an application lets the accessibility bus see.
enum class AtspiDisclosure {
    Shown,  // its controls
    Hidden, // not its controls, or it is not there at all
    Silent, // nothing was heard of it in time
};

namespace Atspi {

// Whether the application shows windows with nothing inside: browsers made from Chromium, unless they were
// started with a switch. Throws PlatformError as AtspiApplication does. Main thread.
QCoro::Task<bool> hidesControls(std::shared_ptr<AtspiApplication> application,
                                std::shared_ptr<const AtspiCache> cache);

// How the applications with these processes stand, in their order; wakes and starts nothing, except a
// registry that does not run. Ends when the limit is over at the latest. Throws nothing. Main thread.
QCoro::Task<QList<AtspiDisclosure>> disclosures(QDBusConnection bus, QList<qint64> processes,
                                                std::chrono::milliseconds limit);

} // namespace Atspi
