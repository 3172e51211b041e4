// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Accessibility/AtspiStates.h"

#include <QDBusArgument>

namespace {

constexpr unsigned wordSize = 32;

} // namespace

bool Atspi::hasState(const QDBusMessage &reply, AtspiState state)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("au"))
        return false;
    const auto words = qdbus_cast<QList<uint>>(reply.arguments().constFirst());
    const auto number = static_cast<unsigned>(state);
    return (words.value(number / wordSize) >> number % wordSize & 1U) != 0;
}

QList<int> Atspi::bitsOf(const QList<AtspiState> &states)
{
    QList<int> bits{0, 0};
    for (const AtspiState state : states) {
        const auto number = static_cast<unsigned>(state);
        bits[number / wordSize] |= static_cast<int>(1U << number % wordSize);
    }
    return bits;
}
