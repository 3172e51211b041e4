// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/ScriptBus.h"

#include "Desktop/Linux/DBus/DBusReply.h"

#include <QCoroFuture>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace {

const QString properties = u"org.freedesktop.DBus.Properties"_s;

} // namespace

QCoro::Task<QVariantList> ScriptBus::call(Partner partner, QString method, QVariantList arguments,
                                          QString failure)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(partner.service, partner.path, partner.interface, method);
    message.setArguments(arguments);
    // Connecting blocks.
    const QDBusConnection bus = co_await m_worker.run(&QDBusConnection::sessionBus);
    const QFuture<QDBusMessage> answer =
        DBusReply::of(bus.asyncCall(message, static_cast<int>(Deadlines::answer.count())));
    const QDBusMessage reply = co_await answer;
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw PlatformError(failure);
    co_return reply.arguments();
}

QCoro::Task<QVariant> ScriptBus::property(Partner partner, QString name, QString failure)
{
    const Partner object{partner.service, partner.path, properties};
    const QVariantList arguments{partner.interface, name};
    const QVariantList values = co_await call(object, u"Get"_s, arguments, failure);
    if (values.isEmpty())
        throw PlatformError(failure);
    co_return values.first().value<QDBusVariant>().variant();
}

QCoro::Task<void> ScriptBus::setProperty(Partner partner, QString name, QVariant value, QString failure)
{
    const Partner object{partner.service, partner.path, properties};
    const QVariantList arguments{partner.interface, name, QVariant::fromValue(QDBusVariant(value))};
    co_await call(object, u"Set"_s, arguments, failure);
}

QCoro::Task<QStringList> ScriptBus::services()
{
    const Partner bus{u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s};
    const QVariantList values = co_await call(bus, u"ListNames"_s, {}, u"The session bus doesn't answer."_s);
    co_return values.value(0).toStringList();
}
