// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Bus.h"

#include "Desktop/Linux/Atspi/Protocol.h"
#include "Desktop/PlatformError.h"

#include <QCoroDBusPendingCall>
#include <QCoroTimer>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QUuid>

using namespace std::chrono_literals;

namespace {

// Time enough for the service to be started by its first call.
constexpr int launcherLimit = 2000; // ms
constexpr int registryLimit = 500;  // ms
constexpr auto readyLimit = 5s;
constexpr auto readyPace = 50ms;

const QString statusInterface = QStringLiteral("org.a11y.Status");
const QString enabledProperty = QStringLiteral("IsEnabled");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

PlatformError unreachable()
{
    return PlatformError(QStringLiteral("The desktop's accessibility service can't be reached. Install "
                                        "at-spi2-core, then log in again."));
}

} // namespace

AtspiBus::AtspiBus() : m_worker(QStringLiteral("orvane.atspi"), QStringLiteral("The accessibility service"))
{
}

AtspiBus::~AtspiBus()
{
    m_worker.post([this] { disconnect(); });
}

QCoro::Task<QDBusConnection> AtspiBus::connection()
{
    const auto self = shared_from_this();
    const QDBusMessage reply =
        co_await askLauncher(QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"), {});
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
    const QVariantList property{statusInterface, enabledProperty};
    const QDBusMessage reply = co_await askLauncher(propertiesInterface, QStringLiteral("Get"), property);
    co_return Atspi::truth(reply);
}

QCoro::Task<void> AtspiBus::enable()
{
    const auto self = shared_from_this();
    const QVariant on = QVariant::fromValue(QDBusVariant(true));
    const QVariantList property{statusInterface, enabledProperty, on};
    co_await askLauncher(propertiesInterface, QStringLiteral("Set"), property);
    // The bus itself is started by the first question for it, which can take its time on a busy machine.
    const QDeadlineTimer deadline(readyLimit);
    bool ready = co_await isReady();
    while (!ready && !deadline.hasExpired()) {
        co_await QCoro::sleepFor(readyPace);
        ready = co_await isReady();
    }
}

QCoro::Task<QDBusMessage> AtspiBus::askLauncher(QString interface, QString method, QVariantList arguments)
{
    const auto self = shared_from_this();
    auto job = [] { return QDBusConnection::sessionBus(); };
    const QDBusConnection session = co_await m_worker.run(job);
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"),
                                                       QStringLiteral("/org/a11y/bus"), interface, method);
    call.setArguments(arguments);
    const QDBusPendingCall pending = session.asyncCall(call, launcherLimit);
    const QDBusMessage reply = co_await pending;
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw unreachable();
    co_return reply;
}

// On the worker.
QDBusConnection AtspiBus::connect(const QString &address)
{
    if (address == m_address) {
        const QDBusConnection present(m_connectionName);
        if (present.isConnected())
            return present;
    }
    disconnect();
    m_address = address;
    m_connectionName = QStringLiteral("orvane-accessibility-") + QUuid::createUuid().toString();
    return QDBusConnection::connectToBus(address, m_connectionName);
}

// On the worker.
void AtspiBus::disconnect()
{
    if (!m_connectionName.isEmpty())
        QDBusConnection::disconnectFromBus(m_connectionName);
    m_connectionName.clear();
}

// Most toolkits answer in bulk only while somebody listens to their events. So we listen for one that hardly
// ever happens. An application that starts afterwards can miss it; hearing of a new listener wakes it too.
QCoro::Task<void> AtspiBus::wakeCaches(QDBusConnection bus)
{
    const AtspiReference registry{Atspi::registryService, QStringLiteral("/org/a11y/atspi/registry")};
    const QVariantList event{QStringLiteral("window:desktop-destroy")};
    for (const QString &method : {QStringLiteral("DeregisterEvent"), QStringLiteral("RegisterEvent")}) {
        const QDBusMessage call =
            Atspi::call(registry, QStringLiteral("org.a11y.atspi.Registry"), method, event);
        const QDBusPendingCall pending = bus.asyncCall(call, registryLimit);
        const QDBusMessage reply = co_await pending;
        if (reply.type() != QDBusMessage::ReplyMessage)
            qWarning("Accessible trees will be read slowly: %s", qUtf8Printable(reply.errorMessage()));
    }
}
