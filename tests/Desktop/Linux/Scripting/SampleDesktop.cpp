// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/SampleDesktop.h"

using namespace Qt::StringLiterals;

SampleService::SampleService(const QString &name, const QString &object) : m_name(name)
{
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name);
    if (!bus.registerObject(object, this, QDBusConnection::ExportAllSlots) || !bus.registerService(m_name))
        qFatal("The sample service can't be on the session bus.");
}

SampleService::~SampleService()
{
    QDBusConnection(m_name).unregisterService(m_name);
    QDBusConnection::disconnectFromBus(m_name);
}

SamplePortal::SamplePortal()
    : SampleService(u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s)
{
}

// Wrapped twice, as by portals of today.
QDBusVariant SamplePortal::Read(const QString &group, const QString &key) const
{
    const bool isKnown = group == u"org.freedesktop.appearance" && key == u"color-scheme";
    const QDBusVariant value(isKnown ? QVariant(colorScheme()) : QVariant(u"unknown"_s));
    return QDBusVariant(QVariant::fromValue(value));
}

SamplePlasma::SamplePlasma(uint screens)
    : SampleService(u"org.kde.plasmashell"_s, u"/PlasmaShell"_s), pictures(screens)
{
}

void SamplePlasma::setWallpaper(const QString &plugin, const QVariantMap &parameters, uint screen)
{
    if (follows && plugin == u"org.kde.image" && screen < pictures.size())
        pictures[screen] = parameters;
}
