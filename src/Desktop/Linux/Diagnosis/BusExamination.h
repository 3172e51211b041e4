// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// The services on a message bus. A plain value.
struct BusExamination
{
    QStringList running;
    QStringList startable; // activatable by a method call
    // What our extension of GNOME Shell tells as its version: empty if it tells none, nothing if it doesn't
    // run.
    std::optional<QString> extensionVersion = std::nullopt;

    bool isRunning(const QString &service) const { return running.contains(service); }
    bool canStart(const QString &service) const { return startable.contains(service); }

    // The session bus's address, determined without starting a bus; empty if unknown.
    static QString sessionBusAddress();

    // Queries the bus at this address over a private connection; starts no service. Throws PlatformError if
    // there is no bus. May block indefinitely: run it on a thread that can be abandoned.
    static BusExamination take(const QString &address);
};
