// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Protocol.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QList>
#include <QString>

#include <chrono>
#include <optional>

// How much an application lets the accessibility bus see.
enum class AtspiDisclosure {
    Shown,  // its controls
    Hidden, // not its controls, or it is not there at all
    Silent, // nothing was heard of it in time
};

namespace Atspi {

// The root object of the application with this process: among those registered on the accessibility bus, the
// one whose connection belongs to the process or, failing that, to a process that it has started or to
// another one of its sandbox, as the go-between through which a Flatpak reaches the bus. Of several, the one
// that shows most windows. None when the application is not registered. Throws PlatformError when the
// registry does not answer. Main thread.
QCoro::Task<std::optional<AtspiReference>> findApplication(QDBusConnection bus, qint64 processIdentifier);

// How the applications with these processes stand, in their order; wakes and starts nothing, except a
// registry that does not run. Ends when the limit is over at the latest. Throws nothing. Main thread.
QCoro::Task<QList<AtspiDisclosure>> disclosures(QDBusConnection bus, QList<qint64> processes,
                                                std::chrono::milliseconds limit);

// What the system calls the process, cleaned; "The application" when it has ended.
QString processName(qint64 processIdentifier);

} // namespace Atspi
