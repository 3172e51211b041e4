// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Window/SettingsPortal.h"

#include "Desktop/Linux/DBus/DBusReply.h"

#include <QCoroFuture>
#include <QDBusMessage>
#include <QPointer>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;
const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString interface = u"org.freedesktop.portal.Settings"_s;
const QString appearanceGroup = u"org.freedesktop.appearance"_s;
const QString colorSchemeKey = u"color-scheme"_s;

// The call may have to start the portal first.
constexpr int limit = 10'000; // ms

// Older portals wrap the value in two variants.
QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

SettingsPortal::SettingsPortal()
    : m_connectionName(u"orvane-portal-"_s + QUuid::createUuid().toString()),
      m_worker(u"orvane.portal"_s, u"The session bus"_s)
{
    // QtDBus looks up a slot's parameter types by name, so they must be registered.
    qRegisterMetaType<QDBusVariant>();
    m_following = follow();
}

SettingsPortal::~SettingsPortal()
{
    m_worker.post([name = m_connectionName] { QDBusConnection::disconnectFromBus(name); });
}

// Runs on the worker.
bool SettingsPortal::connectToBus()
{
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName);
    return bus.isConnected() && bus.connect(service, path, interface, u"SettingChanged"_s, this,
                                            SLOT(settingChanged(QString, QString, QDBusVariant)));
}

QCoro::Task<void> SettingsPortal::follow()
{
    const QPointer<SettingsPortal> self(this);
    auto job = [this] { return connectToBus(); };
    bool isConnected = false;
    try {
        isConnected = co_await m_worker.run(std::move(job));
    } catch (const PlatformError &) {
        // A bus that doesn't respond counts as absent.
        isConnected = false;
    }
    if (!self || !isConnected)
        co_return;
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, u"Read"_s);
    question.setArguments({appearanceGroup, colorSchemeKey});
    const QDBusPendingCall pending = QDBusConnection(m_connectionName).asyncCall(question, limit);
    const QFuture<QDBusMessage> reply = DBusReply::of(pending);
    const QDBusMessage answer = co_await reply;
    // A change signal received in the meantime is newer than this reply.
    if (self && answer.type() == QDBusMessage::ReplyMessage && !m_colorScheme)
        setColorScheme(answer.arguments().value(0));
}

void SettingsPortal::settingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == appearanceGroup && key == colorSchemeKey)
        setColorScheme(value.variant());
}

void SettingsPortal::setColorScheme(const QVariant &value)
{
    bool isNumber = false;
    const std::uint32_t scheme = unwrapped(value).toUInt(&isNumber);
    if (!isNumber || m_colorScheme == scheme)
        return;
    m_colorScheme = scheme;
    Q_EMIT colorSchemeChanged();
}
