// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Protocol.h"
#include "Desktop/Linux/Atspi/Toolkits.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QString>

#include <chrono>
#include <memory>

class AtspiPeer;

// An application on the accessibility bus, for the lifetime of one tree. Sends calls, and turns failures into
// error messages for the user. Thread: main.
class AtspiApplication
{
public:
    AtspiApplication(const QDBusConnection &bus, const AtspiReference &root, const QString &processName);

    // Creates an application and queries its name and toolkit. Throws as `exchange` does.
    static QCoro::Task<std::shared_ptr<AtspiApplication>> create(QDBusConnection bus, AtspiReference root,
                                                                 QString processName);

    // For calls that change state, such as DoAction.
    const QDBusConnection &bus() const { return m_bus; }
    // For calls without side effects: the peer's connection if set, or else the bus.
    const QDBusConnection &queryConnection() const;
    void setPeer(std::shared_ptr<AtspiPeer> peer);

    const AtspiReference &root() const { return m_root; }
    const QString &name() const { return m_name; } // cleaned
    AtspiToolkit toolkit() const { return m_toolkit; }

    // Sends the calls, which must have no side effects, and returns the replies in the same order. A single
    // call that fails or times out has an error as its reply. Throws PlatformError if the application stops
    // responding, exceeds `walkLimit` or quits, or if the bus is lost.
    static QCoro::Task<QList<QDBusMessage>> exchange(std::shared_ptr<AtspiApplication> application,
                                                     QList<QDBusMessage> calls);

    // Sends one call that changes state, over the bus.
    static QCoro::Task<QDBusMessage> act(std::shared_ptr<AtspiApplication> application, QDBusMessage call);

    // The timeout per call, and the total time an application may keep us waiting.
    static constexpr std::chrono::milliseconds callLimit{900};
    static constexpr std::chrono::milliseconds walkLimit{5000};

private:
    static QCoro::Task<QList<QDBusMessage>> exchangeOver(QDBusConnection connection,
                                                         std::shared_ptr<AtspiApplication> application,
                                                         QList<QDBusMessage> calls);

    QDBusConnection m_bus;
    std::shared_ptr<AtspiPeer> m_peer;
    AtspiReference m_root;
    QString m_name;
    AtspiToolkit m_toolkit = AtspiToolkit::Other;
    std::chrono::milliseconds m_waited{0};
};

namespace Atspi {

// Sends calls to services that reply quickly, such as the bus daemon or the registry, and returns the
// replies. Throws PlatformError if `service` doesn't respond or the bus is lost; calls to other services may
// fail individually. Thread: main.
QCoro::Task<QList<QDBusMessage>> exchangeAtOnce(QDBusConnection bus, QString service,
                                                QList<QDBusMessage> calls);

} // namespace Atspi
