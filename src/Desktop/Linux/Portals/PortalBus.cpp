// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Portals/PortalBus.h"

#include "Base/Text.h"
#include "Desktop/Linux/DBus/DBusReply.h"

#include <QCoroFuture>
#include <QDBusError>
#include <QPointer>
#include <QUuid>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;

const QString programIdentifier = u"org.orvane.Orvane"_s; // of the desktop entry

// A call may have to start the portals first.
constexpr int limit = 10'000; // ms

constexpr auto usersPatience = 120s; // until an unanswered dialog counts as refused

// Coroutines may be resumed after the bus has been destroyed, such as while the user is asked.
void requireAlive(const QPointer<PortalBus> &bus)
{
    if (!bus)
        throw PlatformError(u"The connection to the desktop portals has been closed."_s);
}

} // namespace

PortalBus::PortalBus() : m_connectionName(u"orvane-portals-"_s + QUuid::createUuid().toString()) {}

PortalBus::~PortalBus()
{
    m_worker.post([name = m_connectionName] { QDBusConnection::disconnectFromBus(name); });
}

QString PortalBus::path()
{
    return u"/org/freedesktop/portal/desktop"_s;
}

QString PortalBus::newToken()
{
    return u"orvane%1"_s.arg(++m_tokens);
}

// Runs on the worker, since connecting blocks.
void PortalBus::connectToBus()
{
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName);
    if (!bus.isConnected() ||
        !bus.connect(QString(), QString(), u"org.freedesktop.portal.Request"_s, u"Response"_s, this,
                     SLOT(respond(uint, QVariantMap, QDBusMessage))))
        throw PlatformError(u"The session bus can't be reached."_s);
}

QCoro::Task<void> PortalBus::connect()
{
    if (m_isConnected)
        co_return;
    const QPointer<PortalBus> self(this);
    const auto job = [this] { connectToBus(); };
    co_await m_worker.run(job);
    requireAlive(self);
    m_isConnected = true;
    // Older portals don't know this call, and take the program for one without a name.
    QDBusMessage introduction = QDBusMessage::createMethodCall(
        service, path(), u"org.freedesktop.host.portal.Registry"_s, u"Register"_s);
    introduction.setArguments({programIdentifier, QVariantMap()});
    const QFuture<QDBusMessage> reply = DBusReply::of(connection().asyncCall(introduction, limit));
    co_await reply;
}

void PortalBus::respond(uint code, const QVariantMap &results, const QDBusMessage &signal)
{
    const Pending pending = m_pending.take(signal.path());
    if (!pending)
        return;
    pending->addResult(Response{code, results});
    pending->finish();
}

QCoro::Task<QDBusMessage> PortalBus::call(QString path, QString interface, QString method,
                                          QVariantList arguments)
{
    const QPointer<PortalBus> self(this);
    co_await connect();
    requireAlive(self);
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    const QFuture<QDBusMessage> reply = DBusReply::of(connection().asyncCall(message, limit));
    const QDBusMessage answer = co_await reply;
    if (QDBusError(answer).type() == QDBusError::ServiceUnknown)
        throw PlatformError(u"There is no desktop portal."_s);
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw PlatformError(u"The desktop portal says: %1"_s.arg(Text::cleaned(answer.errorMessage())));
    co_return answer;
}

void PortalBus::send(const QString &path, const QString &interface, const QString &method,
                     const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    connection().send(message);
}

QCoro::Task<PortalBus::Response> PortalBus::response(QString interface, QString method,
                                                     QVariantList arguments, QVariantMap options,
                                                     Partner partner, Sentences sentences)
{
    const QPointer<PortalBus> self(this);
    co_await connect();
    requireAlive(self);
    const QString token = newToken();
    const QString sender = connection().baseService().mid(1).replace(u'.', u'_');
    const QString handle = path() + u"/request/"_s + sender + u'/' + token;
    options.insert(u"handle_token"_s, token);
    arguments.append(options);
    const Pending pending = std::make_shared<QPromise<Response>>();
    pending->start();
    m_pending.insert(handle, pending);
    const QFuture<Response> awaited = pending->future();
    co_await call(path(), interface, method, arguments);
    const std::chrono::milliseconds patience =
        partner == Partner::User ? usersPatience : std::chrono::milliseconds(limit);
    const QFuture<bool> finished = finishedWithin(awaited, patience);
    const bool isAnswered = co_await finished;
    requireAlive(self);
    if (!isAnswered) {
        m_pending.remove(handle);
        send(handle, u"org.freedesktop.portal.Request"_s, u"Close"_s, {});
        throw PlatformError(partner == Partner::User ? sentences.refusal
                                                     : u"The desktop portal doesn't answer."_s);
    }
    co_return awaited.result();
}

QCoro::Task<QVariantMap> PortalBus::request(QString interface, QString method, QVariantList arguments,
                                            QVariantMap options, Partner partner, Sentences sentences)
{
    const Response answer = co_await response(interface, method, arguments, options, partner, sentences);
    if (answer.code == 1)
        throw PlatformError(sentences.refusal);
    if (answer.code != 0)
        throw PlatformError(sentences.failure);
    co_return answer.results;
}

bool PortalBus::listen(const QString &interface, const QString &signal, QObject *receiver, const char *slot)
{
    // Without the service's name: looking up its owner would block.
    return connection().connect(QString(), path(), interface, signal, receiver, slot);
}
