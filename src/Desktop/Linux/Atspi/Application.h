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

// One application on the accessibility bus during one walk: sends it calls, and says in a sentence for the
// user why they get no answer. Main thread.
class AtspiApplication
{
public:
    AtspiApplication(const QDBusConnection &bus, const AtspiReference &root, const QString &processName);

    // Asks the application for what it calls itself and what made it. A copy with the answers; throws as
    // `exchange` does.
    static QCoro::Task<std::shared_ptr<AtspiApplication>> introduced(QDBusConnection bus, AtspiReference root,
                                                                     QString processName);

    // For calls that change state, such as DoAction.
    const QDBusConnection &bus() const { return m_bus; }
    // For questions: over the bus, until a connection beside it is given.
    const QDBusConnection &questions() const;
    void askOver(std::shared_ptr<AtspiPeer> peer);

    const AtspiReference &root() const { return m_root; }
    const QString &name() const { return m_name; } // cleaned
    AtspiToolkit toolkit() const { return m_toolkit; }

    // Sends the calls, which are questions, and gives the replies in their order. A call that fails or takes
    // too long by itself has an error for its reply. Throws PlatformError when the application has stopped
    // answering, has used up the time of the whole walk or has quit, and when the bus is gone.
    static QCoro::Task<QList<QDBusMessage>> exchange(std::shared_ptr<AtspiApplication> application,
                                                     QList<QDBusMessage> calls);

    // The same with one call that changes something.
    static QCoro::Task<QDBusMessage> act(std::shared_ptr<AtspiApplication> application, QDBusMessage call);

    // How long one call may take, and all waiting of one walk together.
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

// The replies of those who answer at once if at all, as the bus itself or its registry. Throws PlatformError
// when `service` does not, or the bus is gone; calls to others may fail singly. Main thread.
QCoro::Task<QList<QDBusMessage>> exchangeAtOnce(QDBusConnection bus, QString service,
                                                QList<QDBusMessage> calls);

} // namespace Atspi
