// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Peer.h"

#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/Atspi/Bus.h"
#include "Desktop/PlatformError.h"

#include <QCoroDBusPendingCall>
#include <QUuid>

#include <utility>

namespace {

// It has just answered over the bus, so this is long.
constexpr int firstAnswerLimit = 200; // ms

// Qt and GTK 4 are known to offer none.
bool mayOfferConnection(AtspiToolkit toolkit)
{
    return toolkit != AtspiToolkit::Qt && toolkit != AtspiToolkit::Gtk4;
}

QCoro::Task<QString> offeredAddress(std::shared_ptr<AtspiApplication> application)
{
    const QList<QDBusMessage> question{Atspi::call(application->root(), Atspi::applicationInterface,
                                                   QStringLiteral("GetApplicationBusAddress"))};
    const QList<QDBusMessage> reply = co_await AtspiApplication::exchange(application, question);
    co_return Atspi::text(reply.constFirst()).value_or(QString());
}

void close(AtspiBus &bus, const QString &name)
{
    bus.worker().post([name] { QDBusConnection::disconnectFromPeer(name); });
}

// Whether it is the application itself that answers there: the address that a sandboxed one offers means
// another file outside its sandbox, if any.
QCoro::Task<bool> leadsTo(QDBusConnection connection, AtspiReference root)
{
    const QDBusMessage question =
        Atspi::call(root, Atspi::accessibleInterface, QStringLiteral("GetApplication"));
    const QDBusPendingCall pending = connection.asyncCall(question, firstAnswerLimit);
    const QDBusMessage answer = co_await pending;
    co_return Atspi::reference(answer).service == root.service;
}

// None where it takes too long.
QCoro::Task<std::shared_ptr<AtspiPeer>> connectTo(std::shared_ptr<AtspiBus> bus, QString address)
{
    const QString name = QStringLiteral("orvane-application-") + QUuid::createUuid().toString();
    auto job = [address, name] { return QDBusConnection::connectToPeer(address, name); };
    try {
        const QDBusConnection connection = co_await bus->worker().run(std::move(job));
        co_return std::make_shared<AtspiPeer>(bus, connection);
    } catch (const PlatformError &) {
        close(*bus, name);
        co_return std::shared_ptr<AtspiPeer>();
    }
}

} // namespace

bool Atspi::isSocketAddress(const QString &address)
{
    const bool isSocket = address.startsWith(QLatin1String("unix:path=")) ||
                          address.startsWith(QLatin1String("unix:abstract="));
    // Several addresses are alternatives to each other.
    return isSocket && !address.contains(u';');
}

AtspiPeer::AtspiPeer(std::shared_ptr<AtspiBus> bus, const QDBusConnection &connection)
    : m_bus(std::move(bus)), m_connection(connection)
{
}

AtspiPeer::~AtspiPeer()
{
    close(*m_bus, m_connection.name());
}

QCoro::Task<std::shared_ptr<AtspiPeer>> AtspiPeer::open(std::shared_ptr<AtspiBus> bus,
                                                        std::shared_ptr<AtspiApplication> application)
{
    const std::shared_ptr<AtspiPeer> none;
    if (!mayOfferConnection(application->toolkit()))
        co_return none;
    const QString address = co_await offeredAddress(application);
    if (!Atspi::isSocketAddress(address))
        co_return none;
    const std::shared_ptr<AtspiPeer> peer = co_await connectTo(bus, address);
    if (!peer)
        co_return none;
    const bool isItsOwn = co_await leadsTo(peer->connection(), application->root());
    co_return isItsOwn ? peer : none;
}
