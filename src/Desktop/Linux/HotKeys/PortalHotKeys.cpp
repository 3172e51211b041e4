// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/HotKeys/PortalHotKeys.h"

#include "Desktop/Linux/HotKeys/HotKeyRefusal.h"
#include "Desktop/Linux/Typing/VirtualKeys.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QObject>

#include <array>

#include <xkbcommon/xkbcommon.h>

using namespace Qt::StringLiterals;

// A shortcut as the portal takes it: its name and properties.
struct PortalShortcut
{
    QString name;
    QVariantMap properties;
};
Q_DECLARE_METATYPE(PortalShortcut)

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.name << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.name >> shortcut.properties;
    argument.endStructure();
    return argument;
}

namespace {

const QString interface = u"org.freedesktop.portal.GlobalShortcuts"_s;

// Nobody reads why there is no hot key.
const PortalBus::Sentences sentences{u"The user wants no hot key."_s, u"There is no hot key."_s};

// In the notation of the shortcuts specification; empty for keys without a name.
QString triggerFor(std::uint16_t virtualKey)
{
    const std::optional<std::uint32_t> symbol = symbolOfVirtualKey(virtualKey);
    std::array<char, 64> name{};
    if (!symbol || xkb_keysym_get_name(*symbol, name.data(), name.size()) <= 0)
        return {};
    return u"CTRL+ALT+"_s + QString::fromLatin1(name.data());
}

class PortalKey : public QObject, public HotKeyReference
{
    Q_OBJECT

public:
    PortalKey(PortalBus &portals, const QString &session, const QString &name, std::function<void()> pressed)
        : m_portals(portals), m_session(session), m_name(name), m_pressed(std::move(pressed))
    {
    }
    ~PortalKey() override { m_portals.send(m_session, u"org.freedesktop.portal.Session"_s, u"Close"_s, {}); }

    bool listen()
    {
        return m_portals.listen(interface, u"Activated"_s, this,
                                SLOT(press(QDBusObjectPath, QString, qulonglong, QVariantMap)));
    }

private Q_SLOTS:
    void press(const QDBusObjectPath &session, const QString &name, qulonglong /* time */,
               const QVariantMap & /* options */)
    {
        if (session.path() == m_session && name == m_name)
            m_pressed();
    }

private:
    PortalBus &m_portals;
    const QString m_session;
    const QString m_name;
    std::function<void()> m_pressed;
};

} // namespace

QCoro::Task<std::shared_ptr<HotKeyReference>> PortalHotKeys::registerHotKey(std::uint16_t virtualKey,
                                                                            HotKeyModifiers /* see above */,
                                                                            HotKeyIdentifier identifier,
                                                                            std::function<void()> pressed)
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    if (HotKeyRefusal::isKept())
        co_return std::shared_ptr<HotKeyReference>();
    const QString name = u"toggle-%1"_s.arg(identifier.number);
    try {
        const QVariantList nothing;
        const QVariantMap creation{{u"session_handle_token"_s, m_portals.newToken()}};
        const QVariantMap created = co_await m_portals.request(
            interface, u"CreateSession"_s, nothing, creation, PortalBus::Partner::Portal, sentences);
        const QString session = created.value(u"session_handle"_s).toString();
        const auto key = std::make_shared<PortalKey>(m_portals, session, name, std::move(pressed));
        const QVariantMap properties{{u"description"_s, u"Show or hide Orvane"_s},
                                     {u"preferred_trigger"_s, triggerFor(virtualKey)}};
        const QList<PortalShortcut> shortcuts{{name, properties}};
        const QVariantList binding{QVariant::fromValue(QDBusObjectPath(session)),
                                   QVariant::fromValue(shortcuts), QString()};
        const QVariantMap noOptions;
        // Some portals report a failure, but tell the shortcuts.
        const PortalBus::Response bound = co_await m_portals.response(
            interface, u"BindShortcuts"_s, binding, noOptions, PortalBus::Partner::User, sentences);
        const bool isAllowed = bound.results.contains(u"shortcuts"_s);
        if (!isAllowed)
            HotKeyRefusal::keep();
        if (isAllowed && key->listen())
            co_return std::shared_ptr<HotKeyReference>(key);
    } catch (const PlatformError &) {
        // Without a portal there are no hot keys; that isn't reported.
    }
    co_return std::shared_ptr<HotKeyReference>();
}

#include "PortalHotKeys.moc"
