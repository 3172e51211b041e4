// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QStringList>
#include <QVariantMap>

// A media player on the session bus, on a connection of its own.
class SamplePlayer : public QObject
{
    Q_OBJECT

public:
    // `service` is the last part of its name on the bus.
    SamplePlayer(const QString &service, const QString &identity);
    ~SamplePlayer() override;

    QString identity;
    QString status = QStringLiteral("Paused");
    double volume = 0.5;
    QVariantMap metadata;
    QStringList calls;

private:
    QString m_service;
};

class SamplePlayerIdentity : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(QString Identity READ identity)

public:
    explicit SamplePlayerIdentity(SamplePlayer *player) : QDBusAbstractAdaptor(player), m_player(*player) {}
    QString identity() const { return m_player.identity; }

private:
    SamplePlayer &m_player;
};

class SamplePlayerControls : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ status)
    Q_PROPERTY(double Volume READ volume WRITE setVolume)
    Q_PROPERTY(QVariantMap Metadata READ metadata)
    Q_PROPERTY(qlonglong Position READ position)

public:
    explicit SamplePlayerControls(SamplePlayer *player) : QDBusAbstractAdaptor(player), m_player(*player) {}
    QString status() const { return m_player.status; }
    double volume() const { return m_player.volume; }
    void setVolume(double volume) { m_player.volume = volume; }
    QVariantMap metadata() const { return m_player.metadata; }
    qlonglong position() const { return 2'500'000; }

public Q_SLOTS:
    void Play() { m_player.calls << QStringLiteral("Play"); }
    void Pause() { m_player.calls << QStringLiteral("Pause"); }
    void PlayPause() { m_player.calls << QStringLiteral("PlayPause"); }
    void Stop() { m_player.calls << QStringLiteral("Stop"); }
    void Next() { m_player.calls << QStringLiteral("Next"); }
    void Previous() { m_player.calls << QStringLiteral("Previous"); }

private:
    SamplePlayer &m_player;
};

// The notification service.
class SampleNotifications : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    SampleNotifications();
    ~SampleNotifications() override;

    QStringList capabilities;
    QStringList shown; // "summary: body"

public Q_SLOTS:
    QStringList GetCapabilities() const { return capabilities; }
    uint Notify(const QString &application, uint replaced, const QString &icon, const QString &summary,
                const QString &body, const QStringList &actions, const QVariantMap &hints, int timeout);
};
