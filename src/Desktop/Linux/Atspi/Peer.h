// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QDBusConnection>
#include <QString>

#include <memory>

class AtspiApplication;
class AtspiBus;

// A connection to one application beside the bus, which GTK 3 and browsers offer: answers come sooner without
// the bus between, most of all where they are many.
//
// For questions only. GTK 3 carries out an action inside the message that asks for it, and when that opens a
// dialog and waits, an application whose connection is closed meanwhile never answers again.
//
// Main thread; setting up and closing happen on the bus's worker.
class AtspiPeer
{
public:
    // None where the application offers none, or is not who answers over it at once: then the bus does.
    // Throws PlatformError as AtspiApplication does.
    static QCoro::Task<std::shared_ptr<AtspiPeer>> open(std::shared_ptr<AtspiBus> bus,
                                                        std::shared_ptr<AtspiApplication> application);
    AtspiPeer(std::shared_ptr<AtspiBus> bus, const QDBusConnection &connection);
    ~AtspiPeer();
    AtspiPeer(const AtspiPeer &) = delete;
    AtspiPeer &operator=(const AtspiPeer &) = delete;

    const QDBusConnection &connection() const { return m_connection; }

private:
    std::shared_ptr<AtspiBus> m_bus;
    QDBusConnection m_connection;
};

namespace Atspi {

// Whether connecting to that address does nothing but connect: an address can also name a program that is to
// be started, and whoever we look at must not choose what we run.
bool isSocketAddress(const QString &address);

} // namespace Atspi
