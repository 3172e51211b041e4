// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

#include <cstdint>
#include <optional>

// The desktop portal's setting for light and dark, at this moment and as it changes. Main thread; connecting
// to the session bus blocks, and happens on a worker. Without a bus or a portal it stays unknown.
class SettingsPortal : public QObject
{
    Q_OBJECT

public:
    SettingsPortal();
    ~SettingsPortal() override;

    // As the portal numbers it; nothing as long as it has not been told.
    std::optional<std::uint32_t> colorScheme() const { return m_colorScheme; }

Q_SIGNALS:
    void colorSchemeChanged();

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    QCoro::Task<void> follow();
    bool connectToBus();
    void setColorScheme(const QVariant &value);

    QString m_connectionName;
    std::optional<std::uint32_t> m_colorScheme;
    BoundedQueue m_worker;
    QCoro::Task<void> m_following;
};
