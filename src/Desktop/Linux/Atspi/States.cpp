// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/States.h"

#include <QDBusArgument>

bool Atspi::hasState(const QDBusMessage &reply, AtspiState state)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("au"))
        return false;
    const auto words = qdbus_cast<QList<uint>>(reply.arguments().constFirst());
    const auto number = static_cast<unsigned>(state);
    return (words.value(number / 32) >> number % 32 & 1U) != 0;
}
