// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

#include <memory>

class AtspiApplication;

// Connects to the accessibility bus, a separate bus whose address and IsEnabled switch are available on the
// session bus. Connecting blocks, so it runs on a worker. Thread: main.
class AtspiBus : public std::enable_shared_from_this<AtspiBus>
{
public:
    AtspiBus();
    ~AtspiBus();
    AtspiBus(const AtspiBus &) = delete;
    AtspiBus &operator=(const AtspiBus &) = delete;

    // Returns the connection, (re)connecting if there is none or the address has changed. Throws
    // PlatformError if the bus is unreachable.
    QCoro::Task<QDBusConnection> connection();

    // The IsEnabled switch, which makes toolkits expose their trees. `enable` also waits, a few seconds at
    // most, until the bus is ready. Both throw PlatformError if the session bus or the AT-SPI launcher is
    // unreachable.
    QCoro::Task<bool> isEnabled();
    QCoro::Task<void> enable();

    // Whether accessibility is enabled and the bus reachable. Never throws.
    QCoro::Task<bool> isReady();

    // Makes applications build the caches behind GetItems. Never throws: on failure, trees are read object by
    // object.
    QCoro::Task<void> wakeCaches(QDBusConnection bus);

    // For processing large replies off the main thread.
    BoundedQueue &worker() { return m_worker; }

private:
    QCoro::Task<QDBusMessage> askLauncher(QDBusMessage call);
    QDBusConnection connect(const QString &address);
    void disconnect();

    // Used on the worker only.
    QString m_address;
    QString m_connectionName;

    BoundedQueue m_worker;
};

// A direct D-Bus connection to one application, offered by GTK 3 and browsers. Faster than the bus,
// especially for many calls.
//
// For calls without side effects only. GTK 3 performs an action while handling the call; if the action runs a
// modal dialog and the peer connection closes meanwhile, the application never replies again.
//
// Connects and disconnects on the bus's worker. Thread: main.
class AtspiPeer
{
public:
    // Null if the application offers no direct connection, or another process answers on it; use the bus
    // then. Throws PlatformError as AtspiApplication does.
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

// Whether the address is a plain socket. D-Bus addresses may also name a program to start, which an untrusted
// application must not choose.
bool isSocketAddress(const QString &address);

} // namespace Atspi
