// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>

#include <functional>

// Services of a desktop on the session bus, each on a connection of its own.
class SampleService : public QObject
{
    Q_OBJECT

public:
    ~SampleService() override;

protected:
    // `object` is where the service has its methods.
    explicit SampleService(const QString &name, const QString &object);

private:
    const QString m_name;
};

// The portal's settings.
class SamplePortal : public SampleService
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    SamplePortal();

    std::function<uint()> colorScheme = [] { return 0U; };

public Q_SLOTS:
    QDBusVariant Read(const QString &group, const QString &key) const;
};

// Plasma's shell, with the pictures of its screens.
class SamplePlasma : public SampleService, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.PlasmaShell")

public:
    explicit SamplePlasma(uint screens);

    QList<QVariantMap> pictures;
    bool follows = true; // takes pictures that are set

public Q_SLOTS:
    QVariantMap wallpaper(uint screen) const { return pictures.value(screen); }
    void setWallpaper(const QString &plugin, const QVariantMap &parameters, uint screen);
};
