// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Portals/RemoteKeys.h"

#include "Desktop/Linux/Portals/RestoreToken.h"

#include <QDBusObjectPath>

using namespace Qt::StringLiterals;

namespace {

const QString interface = u"org.freedesktop.portal.RemoteDesktop"_s;
const PortalBus::Sentences sentences{
    u"You didn't allow Orvane to press keys, so nothing was typed; it asks again next time."_s,
    u"The desktop didn't let Orvane press keys."_s};

constexpr uint keyboard = 1;
constexpr uint untilRevoked = 2;

constexpr std::uint8_t kernelOffset = 8; // XKB's keycodes are the kernel's plus this

} // namespace

RemoteKeys::RemoteKeys(PortalBus &bus, const QString &session)
    : m_bus(bus), m_session(session), m_clipboard(std::make_unique<PortalClipboard>(bus, session))
{
}

RemoteKeys::~RemoteKeys()
{
    m_bus.send(m_session, u"org.freedesktop.portal.Session"_s, u"Close"_s, {});
}

QCoro::Task<std::unique_ptr<RemoteKeys>> RemoteKeys::open(PortalBus &bus)
{
    const QVariantList nothing;
    const QVariantMap creation{{u"session_handle_token"_s, bus.newToken()}};
    const QVariantMap created = co_await bus.request(interface, u"CreateSession"_s, nothing, creation,
                                                     PortalBus::Partner::Portal, sentences);
    const QString path = created.value(u"session_handle"_s).toString();
    std::unique_ptr<RemoteKeys> session(new RemoteKeys(bus, path));

    const QVariant handle = QVariant::fromValue(QDBusObjectPath(path));
    QVariantMap devices{{u"types"_s, keyboard}, {u"persist_mode"_s, untilRevoked}};
    const QString token = RestoreToken::read();
    if (!token.isEmpty())
        devices.insert(u"restore_token"_s, token);
    const QVariantList selection{handle};
    co_await bus.request(interface, u"SelectDevices"_s, selection, devices, PortalBus::Partner::Portal,
                         sentences);
    const bool isClipboardRequested = co_await session->m_clipboard->request();
    const QVariantList start{handle, QString()};
    const QVariantMap noOptions;
    const QVariantMap started =
        co_await bus.request(interface, u"Start"_s, start, noOptions, PortalBus::Partner::User, sentences);
    if (!(started.value(u"devices"_s).toUInt() & keyboard))
        throw PlatformError(sentences.refusal);
    if (!isClipboardRequested || !started.value(u"clipboard_enabled"_s).toBool())
        session->m_clipboard.reset();
    // Each token is valid once.
    const QString next = started.value(u"restore_token"_s).toString();
    if (next != token)
        RestoreToken::write(next);
    co_return session;
}

// One by one: the portal handles calls on several threads.
QCoro::Task<void> RemoteKeys::set(QList<std::uint8_t> codes, KeyState state)
{
    for (const std::uint8_t code : codes) {
        const QVariantList arguments{QVariant::fromValue(QDBusObjectPath(m_session)), QVariantMap(),
                                     code - kernelOffset, uint(state)};
        co_await m_bus.call(PortalBus::path(), interface, u"NotifyKeyboardKeycode"_s, arguments);
    }
}
