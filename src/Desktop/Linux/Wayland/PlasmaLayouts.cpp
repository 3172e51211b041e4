// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/PlasmaLayouts.h"

#include "Desktop/Linux/DBus/DBusQuestion.h"

using namespace Qt::StringLiterals;

QCoro::Task<std::uint32_t> PlasmaLayouts::activeGroup()
{
    const DBusQuestion question{u"org.kde.keyboard"_s, u"/Layouts"_s, u"org.kde.KeyboardLayouts"_s,
                                u"getLayout"_s};
    const QVariantList values =
        co_await DBusQuestion::answer(question, &QDBusConnection::sessionBus, m_bus, Deadlines::answer);
    co_return values.value(0).toUInt();
}
