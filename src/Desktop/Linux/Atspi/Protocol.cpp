// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Protocol.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

namespace {

// The reply's first value, out of the wrapping that a property's value comes in.
QVariant firstValue(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    const QVariant value = reply.arguments().constFirst();
    return value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
}

} // namespace

bool AtspiReference::isNull() const
{
    return service.isEmpty() || path.isEmpty() || path == QLatin1String("/org/a11y/atspi/null");
}

size_t qHash(const AtspiReference &reference, size_t seed)
{
    // Almost all objects of a tree live on one connection, so its name would tell nothing apart.
    return qHash(reference.path, seed);
}

const QDBusArgument &operator>>(const QDBusArgument &argument, AtspiReference &reference)
{
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> reference.service >> path;
    argument.endStructure();
    reference.path = path.path();
    return argument;
}

QDBusMessage Atspi::call(const AtspiReference &object, const QString &interface, const QString &method,
                         const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(object.service, object.path, interface, method);
    message.setArguments(arguments);
    return message;
}

QDBusMessage Atspi::property(const AtspiReference &object, const QString &interface, const QString &name)
{
    const QVariantList arguments{interface, name};
    return call(object, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"), arguments);
}

std::optional<QString> Atspi::text(const QDBusMessage &reply)
{
    const QVariant value = firstValue(reply);
    if (value.metaType() != QMetaType::fromType<QString>())
        return std::nullopt;
    return value.toString();
}

std::optional<double> Atspi::number(const QDBusMessage &reply)
{
    bool isNumber = false;
    const double result = firstValue(reply).toDouble(&isNumber);
    return isNumber ? std::optional(result) : std::nullopt;
}

bool Atspi::truth(const QDBusMessage &reply)
{
    return firstValue(reply).toBool();
}

AtspiReference Atspi::reference(const QDBusMessage &reply)
{
    const QVariant value = firstValue(reply);
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return {};
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(so)"))
        return {};
    AtspiReference object;
    argument >> object;
    return object;
}

QList<AtspiReference> Atspi::references(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("a(so)"))
        return {};
    QList<AtspiReference> objects;
    const QDBusArgument list = reply.arguments().constFirst().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        AtspiReference object;
        list >> object;
        if (!object.isNull())
            objects.append(object);
    }
    list.endArray();
    return objects;
}
