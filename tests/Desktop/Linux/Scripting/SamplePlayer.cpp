// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/SamplePlayer.h"

using namespace Qt::StringLiterals;

namespace {

const QString playerPath = u"/org/mpris/MediaPlayer2"_s;
const QString notificationPath = u"/org/freedesktop/Notifications"_s;
const QString notificationService = u"org.freedesktop.Notifications"_s;

// A connection for the service with this name; ends with the test if the name is taken.
QDBusConnection connectAs(const QString &service)
{
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, service);
    if (!bus.registerService(service))
        qFatal("The name %s is taken", qUtf8Printable(service));
    return bus;
}

} // namespace

SamplePlayer::SamplePlayer(const QString &service, const QString &identityOfPlayer)
    : identity(identityOfPlayer), m_service(u"org.mpris.MediaPlayer2."_s + service)
{
    new SamplePlayerIdentity(this);
    new SamplePlayerControls(this);
    connectAs(m_service).registerObject(playerPath, this);
}

SamplePlayer::~SamplePlayer()
{
    QDBusConnection(m_service).unregisterService(m_service);
    QDBusConnection::disconnectFromBus(m_service);
}

SampleNotifications::SampleNotifications()
{
    connectAs(notificationService).registerObject(notificationPath, this, QDBusConnection::ExportAllSlots);
}

SampleNotifications::~SampleNotifications()
{
    QDBusConnection(notificationService).unregisterService(notificationService);
    QDBusConnection::disconnectFromBus(notificationService);
}

uint SampleNotifications::Notify(const QString &, uint, const QString &, const QString &summary,
                                 const QString &body, const QStringList &, const QVariantMap &, int)
{
    shown << summary + u": "_s + body;
    return static_cast<uint>(shown.size());
}
