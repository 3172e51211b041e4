// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <QCoroTask>
#include <QString>
#include <QStringList>
#include <QVariant>

// Calls on the session bus for scripts, each bounded in time. Thread: main.
class ScriptBus
{
public:
    struct Partner
    {
        QString service;
        QString path;
        QString interface;
    };

    // Returns the values of the reply. Throws PlatformError with `failure` if the call fails. Services that
    // the bus can start are started.
    QCoro::Task<QVariantList> call(Partner partner, QString method, QVariantList arguments, QString failure);

    QCoro::Task<QVariant> property(Partner partner, QString name, QString failure);
    QCoro::Task<void> setProperty(Partner partner, QString name, QVariant value, QString failure);

    // The names that services have on the bus; empty if there is no bus.
    QCoro::Task<QStringList> services();

private:
    BoundedQueue m_worker{QStringLiteral("desktop.scripts"), QStringLiteral("The session bus")};
};
