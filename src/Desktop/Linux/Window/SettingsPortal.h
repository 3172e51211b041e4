// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

#include <cstdint>
#include <optional>

// Follows the desktop portal's light or dark preference. Connecting to the session bus blocks, so it runs on
// a worker. Thread: main.
class SettingsPortal : public QObject
{
    Q_OBJECT

public:
    SettingsPortal();
    ~SettingsPortal() override;

    // The portal's value (see AppearanceFacts); nothing until received, or without a bus or portal.
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
