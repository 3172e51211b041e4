// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// Which services a message bus knows. A plain value.
struct BusExamination
{
    QStringList running;
    QStringList startable; // they run as soon as somebody asks for them

    bool isRunning(const QString &service) const { return running.contains(service); }
    bool canStart(const QString &service) const { return startable.contains(service); }

    // Where the session bus of this process is, as far as that can be told without starting one; else empty.
    static QString sessionBusAddress();

    // Asks the bus at that address, over a connection of its own; starts no service. Throws PlatformError
    // when there is no bus. Blocks as long as the bus does, so it is for a thread that may be left behind.
    static BusExamination take(const QString &address);
};
