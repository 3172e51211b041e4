// SPDX-License-Identifier: Apache-2.0
// The theme on a real session bus and X server, with fake settings services.
#include "Desktop/Linux/Window/LinuxAppearance.h"
#include "Desktop/Linux/LinuxBench.h"

#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

const QString portalName = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString appearance = u"org.freedesktop.appearance"_s;
const QString colorScheme = u"color-scheme"_s;

} // namespace

// A fake desktop portal, on a connection of its own.
class Portal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    enum class Wrapping { Once, Twice };

    Portal(uint scheme, Wrapping wrapping) : m_scheme(scheme), m_wrapping(wrapping)
    {
        if (!m_bus.registerObject(portalPath, this,
                                  QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals) ||
            !m_bus.registerService(portalName))
            qFatal("The portal's name is taken");
    }
    ~Portal() override { QDBusConnection::disconnectFromBus(u"portal"_s); }

    int questions = 0;

    void change(const QString &group, const QString &key, uint value)
    {
        Q_EMIT SettingChanged(group, key, QDBusVariant(value));
    }

public Q_SLOTS:
    QDBusVariant Read(const QString &group, const QString &key)
    {
        ++questions;
        if (group != appearance || key != colorScheme)
            return QDBusVariant(0u);
        const QVariant value(m_scheme);
        return QDBusVariant(m_wrapping == Wrapping::Once ? value : QVariant::fromValue(QDBusVariant(value)));
    }

Q_SIGNALS:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    uint m_scheme;
    Wrapping m_wrapping;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"portal"_s);
};

// A fake XSETTINGS daemon, with the theme's name only.
class SettingsDaemon
{
public:
    explicit SettingsDaemon(const QByteArray &theme)
    {
        setTheme(theme);
        xcb_set_selection_owner(m_connection.get(), m_connection.ownWindow(),
                                m_connection.internAtom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
        xcb_flush(m_connection.get());
    }

    void setTheme(const QByteArray &theme)
    {
        const auto number = [](auto value) {
            const auto encoded = qToLittleEndian(value);
            return QByteArray(reinterpret_cast<const char *>(&encoded), sizeof(encoded));
        };
        const QByteArray name("Net/ThemeName");
        QByteArray data = QByteArray(4, '\0') + number(quint32(1)) + number(quint32(1)) +
                          QByteArray("\x01\x00", 2) + number(quint16(name.size())) + name +
                          QByteArray(3, '\0') + number(quint32(1)) + number(quint32(theme.size())) + theme;
        data.append(QByteArray((4 - theme.size() % 4) % 4, '\0'));
        const xcb_atom_t settings = m_connection.internAtom("_XSETTINGS_SETTINGS");
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_connection.ownWindow(), settings,
                            settings, 8, uint32_t(data.size()), data.constData());
        xcb_flush(m_connection.get());
    }

private:
    X11Connection m_connection;
};

class LinuxAppearanceTest : public QObject
{
    Q_OBJECT

private:
    SystemClock m_clock;
    std::unique_ptr<X11Display> m_display;

private Q_SLOTS:
    void init()
    {
        QPalette light;
        light.setColor(QPalette::Window, Qt::white);
        light.setColor(QPalette::WindowText, Qt::black);
        QGuiApplication::setPalette(light);
        m_display = std::make_unique<X11Display>(m_clock);
    }

    void thePaletteIsTheFallback()
    {
        const LinuxAppearance watched(m_display.get());
        QSignalSpy changes(&watched, &Appearance::isDarkChanged);
        QVERIFY(!watched.isDark());
        QPalette dark;
        dark.setColor(QPalette::Window, Qt::black);
        dark.setColor(QPalette::WindowText, Qt::white);
        QGuiApplication::setPalette(dark);
        QTRY_VERIFY(watched.isDark());
        QCOMPARE(changes.size(), 1);
        QVERIFY(LinuxAppearance(nullptr).isDark());
    }

    void followsThePortal_data()
    {
        QTest::addColumn<int>("wrapping");
        QTest::newRow("as portals do") << int(Portal::Wrapping::Once);
        QTest::newRow("as older portals do") << int(Portal::Wrapping::Twice);
    }

    void followsThePortal()
    {
        QFETCH(int, wrapping);
        Portal portal(1, Portal::Wrapping(wrapping));
        const LinuxAppearance watched(m_display.get());
        QSignalSpy changes(&watched, &Appearance::isDarkChanged);
        QTRY_VERIFY_WITH_TIMEOUT(watched.isDark(), LinuxBench::patience);
        portal.change(appearance, colorScheme, 2);
        QTRY_VERIFY_WITH_TIMEOUT(!watched.isDark(), LinuxBench::patience);
        portal.change(appearance, colorScheme, 1);
        QTRY_VERIFY_WITH_TIMEOUT(watched.isDark(), LinuxBench::patience);
        QCOMPARE(changes.size(), 3);
    }

    void otherPortalSettingsAreIgnored()
    {
        Portal portal(2, Portal::Wrapping::Once);
        const LinuxAppearance watched(m_display.get());
        QSignalSpy changes(&watched, &Appearance::isDarkChanged);
        QTRY_COMPARE_WITH_TIMEOUT(portal.questions, 1, LinuxBench::patience);
        portal.change(appearance, u"contrast"_s, 1);
        portal.change(u"org.example.other"_s, colorScheme, 1);
        portal.change(appearance, colorScheme, 1);
        QTRY_VERIFY_WITH_TIMEOUT(watched.isDark(), LinuxBench::patience);
        QCOMPARE(changes.size(), 1);
    }

    void followsTheSettingsDaemon()
    {
        const LinuxAppearance watched(m_display.get());
        auto daemon = std::make_unique<SettingsDaemon>("Greybird-dark");
        QTRY_VERIFY_WITH_TIMEOUT(watched.isDark(), LinuxBench::patience);
        daemon->setTheme("Greybird");
        QTRY_VERIFY_WITH_TIMEOUT(!watched.isDark(), LinuxBench::patience);
        daemon->setTheme("Adwaita-dark");
        QTRY_VERIFY_WITH_TIMEOUT(watched.isDark(), LinuxBench::patience);
        daemon.reset();
        QTRY_VERIFY_WITH_TIMEOUT(!watched.isDark(), LinuxBench::patience);
    }

    void readsARunningSettingsDaemon()
    {
        const SettingsDaemon daemon("Adwaita-dark");
        const LinuxAppearance watched(m_display.get());
        QTRY_VERIFY_WITH_TIMEOUT(watched.isDark(), LinuxBench::patience);
    }
};

QTEST_MAIN(LinuxAppearanceTest)
#include "LinuxAppearanceTest.moc"
