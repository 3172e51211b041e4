// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Protocol.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QList>
#include <QString>

#include <chrono>
#include <optional>

// What an application exposes on the accessibility bus.
enum class AtspiDisclosure {
    Shown,  // its controls
    Hidden, // no controls, or it isn't registered
    Silent, // no reply before the timeout
};

namespace Atspi {

// Finds the root object of a process's application among those registered on the accessibility bus: by the
// process of the connection, or else by a descendant process, or else by a process in the same sandbox (the
// D-Bus proxy of a Flatpak). If several match, the one with the most windows. Nothing if the application
// isn't registered. Throws PlatformError if the registry doesn't respond. Thread: main.
QCoro::Task<std::optional<AtspiReference>> findApplication(QDBusConnection bus, qint64 processIdentifier);

// Finds the application of a window by the window's title, for window systems that don't report processes:
// the only one with a window of this title, or else the one whose window is active. Nothing if there is none,
// or if it is ambiguous. Throws PlatformError if the registry doesn't respond. Thread: main.
QCoro::Task<std::optional<AtspiReference>> findApplicationWithWindow(QDBusConnection bus, QString title);

// What the applications of these processes expose, in the same order. Has no side effects, except that it may
// start the registry. Returns after `limit` at the latest. Never throws. Thread: main.
QCoro::Task<QList<AtspiDisclosure>> disclosures(QDBusConnection bus, QList<qint64> processes,
                                                std::chrono::milliseconds limit);

// The process's command name, cleaned; "The application" if it has ended.
QString processName(qint64 processIdentifier);

} // namespace Atspi
