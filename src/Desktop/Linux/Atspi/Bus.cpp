// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Bus.h"

#include "Desktop/Deadlines.h"
#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/DBus/DBusReply.h"
#include "Desktop/PlatformError.h"

#include <QCoroFuture>
#include <QCoroTimer>
#include <QDeadlineTimer>
#include <QUuid>

#include <utility>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// The first call may have to start the service.
constexpr auto launcherLimit = static_cast<int>(Deadlines::answer.count());
constexpr int registryLimit = 500; // ms
constexpr auto readyLimit = 5s;
constexpr auto readyPace = 50ms;

const AtspiReference launcher{Atspi::launcherService, Atspi::launcherPath};

PlatformError unreachable()
{
    return PlatformError(u"The desktop's accessibility service can't be reached. Install "
                         "at-spi2-core, then log in again."_s);
}

// Generous, since the application has just replied over the bus.
constexpr int firstAnswerLimit = 200; // ms

QCoro::Task<QString> offeredAddress(std::shared_ptr<AtspiApplication> application)
{
    const QList<QDBusMessage> question{Atspi::getApplicationBusAddress(application->root())};
    const QList<QDBusMessage> reply = co_await AtspiApplication::exchange(application, question);
    co_return Atspi::text(reply.constFirst()).value_or(QString());
}

void close(AtspiBus &bus, const QString &name)
{
    bus.worker().post([name] { QDBusConnection::disconnectFromPeer(name); });
}

// Verifies that the application itself replies: a sandboxed application's socket path refers to its own file
// system.
QCoro::Task<bool> leadsTo(QDBusConnection connection, AtspiReference root)
{
    const QDBusPendingCall pending = connection.asyncCall(Atspi::getApplication(root), firstAnswerLimit);
    const QFuture<QDBusMessage> reply = DBusReply::of(pending);
    const QDBusMessage answer = co_await reply;
    co_return Atspi::reference(answer).service == root.service;
}

// Null on timeout.
QCoro::Task<std::shared_ptr<AtspiPeer>> connectTo(std::shared_ptr<AtspiBus> bus, QString address)
{
    const QString name = u"orvane-application-"_s + QUuid::createUuid().toString();
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

AtspiBus::AtspiBus() : m_worker(u"orvane.atspi"_s, u"The accessibility service"_s) {}

AtspiBus::~AtspiBus()
{
    m_worker.post([this] { disconnect(); });
}

QCoro::Task<QDBusConnection> AtspiBus::connection()
{
    const auto self = shared_from_this();
    const QDBusMessage question = Atspi::call(launcher, Atspi::launcherInterface, u"GetAddress"_s);
    const QDBusMessage reply = co_await askLauncher(question);
    const QString address = Atspi::text(reply).value_or(QString());
    if (address.isEmpty())
        throw unreachable();
    auto job = [this, address] { return connect(address); };
    const QDBusConnection bus = co_await m_worker.run(std::move(job));
    if (!bus.isConnected())
        throw unreachable();
    co_return bus;
}

QCoro::Task<bool> AtspiBus::isReady()
{
    const auto self = shared_from_this();
    try {
        const bool enabled = co_await isEnabled();
        if (enabled)
            co_await connection();
        co_return enabled;
    } catch (const PlatformError &) {
        co_return false;
    }
}

QCoro::Task<bool> AtspiBus::isEnabled()
{
    const auto self = shared_from_this();
    const QDBusMessage question = Atspi::property(launcher, Atspi::statusInterface, Atspi::enabledProperty);
    const QDBusMessage reply = co_await askLauncher(question);
    co_return Atspi::truth(reply);
}

QCoro::Task<void> AtspiBus::enable()
{
    const auto self = shared_from_this();
    const QDBusMessage on =
        Atspi::setProperty(launcher, Atspi::statusInterface, Atspi::enabledProperty, true);
    co_await askLauncher(on);
    // The first request for the address starts the bus, which is slow on a busy machine.
    const QDeadlineTimer deadline(readyLimit);
    bool ready = co_await isReady();
    while (!ready && !deadline.hasExpired()) {
        co_await QCoro::sleepFor(readyPace);
        ready = co_await isReady();
    }
}

QCoro::Task<QDBusMessage> AtspiBus::askLauncher(QDBusMessage call)
{
    const auto self = shared_from_this();
    auto job = [] { return QDBusConnection::sessionBus(); };
    const QDBusConnection session = co_await m_worker.run(job);
    const QFuture<QDBusMessage> answer = DBusReply::of(session.asyncCall(call, launcherLimit));
    const QDBusMessage reply = co_await answer;
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw unreachable();
    co_return reply;
}

// Runs on the worker.
QDBusConnection AtspiBus::connect(const QString &address)
{
    if (address == m_address) {
        const QDBusConnection present(m_connectionName);
        if (present.isConnected())
            return present;
    }
    disconnect();
    m_address = address;
    m_connectionName = u"orvane-accessibility-"_s + QUuid::createUuid().toString();
    return QDBusConnection::connectToBus(address, m_connectionName);
}

// Runs on the worker.
void AtspiBus::disconnect()
{
    if (!m_connectionName.isEmpty())
        QDBusConnection::disconnectFromBus(m_connectionName);
    m_connectionName.clear();
}

// Most toolkits maintain a cache only while someone listens to their events, so register for a very rare one.
// Applications started since the last registration may have missed it, so deregister first: a new
// registration is announced to all.
QCoro::Task<void> AtspiBus::wakeCaches(QDBusConnection bus)
{
    const AtspiReference registry{Atspi::registryService, Atspi::registryPath};
    const QVariantList event{u"window:desktop-destroy"_s};
    for (const QString &method : {u"DeregisterEvent"_s, u"RegisterEvent"_s}) {
        const QDBusMessage call = Atspi::call(registry, Atspi::registryInterface, method, event);
        const QFuture<QDBusMessage> answer = DBusReply::of(bus.asyncCall(call, registryLimit));
        const QDBusMessage reply = co_await answer;
        if (reply.type() != QDBusMessage::ReplyMessage)
            qWarning("Accessible trees will be read slowly: %s", qUtf8Printable(reply.errorMessage()));
    }
}

bool Atspi::isSocketAddress(const QString &address)
{
    const bool isSocket = address.startsWith("unix:path="_L1) || address.startsWith("unix:abstract="_L1);
    // A semicolon separates alternative addresses.
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
    if (!Atspi::mayOfferPeer(application->toolkit()))
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
