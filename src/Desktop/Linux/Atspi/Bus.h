// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

#include <memory>

class AtspiApplication;

// The way to the accessibility bus: a bus of its own, whose address the session bus knows, with a switch that
// makes toolkits show their trees. Main thread; setting up connections blocks, and happens on a worker.
class AtspiBus : public std::enable_shared_from_this<AtspiBus>
{
public:
    AtspiBus();
    ~AtspiBus();
    AtspiBus(const AtspiBus &) = delete;
    AtspiBus &operator=(const AtspiBus &) = delete;

    // The connection, made when there is none or the bus has moved. Throws PlatformError when the bus cannot
    // be reached.
    QCoro::Task<QDBusConnection> connection();

    // The switch. `enable` also waits, a few seconds at most, until the bus is ready. Both throw
    // PlatformError when the session bus cannot be reached or nobody owns the switch.
    QCoro::Task<bool> isEnabled();
    QCoro::Task<void> enable();

    // Whether the switch is on and the bus can be reached. Throws nothing.
    QCoro::Task<bool> isReady();

    // Asks the applications to have their trees ready for bulk answers. Throws nothing: where it fails, trees
    // are read object by object.
    QCoro::Task<void> wakeCaches(QDBusConnection bus);

    // Work on big answers that is too long for a frame of the main thread.
    BoundedQueue &worker() { return m_worker; }

private:
    QCoro::Task<QDBusMessage> askLauncher(QDBusMessage call);
    QDBusConnection connect(const QString &address);
    void disconnect();

    // Touched on the worker only.
    QString m_address;
    QString m_connectionName;

    BoundedQueue m_worker;
};

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
    // Null if the application offers no direct connection, or another process answers on it; use the bus then.
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
