// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QString>
#include <QVariant>

// A call to a service that may be missing. Never starts the service. Connecting to the bus blocks, so it runs
// on a worker. Thread: main.
struct DBusQuestion
{
    using Bus = QDBusConnection (*)(); // &QDBusConnection::sessionBus or systemBus

    QString service;
    QString path;
    QString interface;
    QString method;
    QVariantList arguments = {};

    // Returns the values of the reply; none if the bus or service is missing or doesn't reply within `limit`.
    // Never throws.
    static QCoro::Task<QVariantList> answer(DBusQuestion question, Bus connect, BoundedQueue &worker,
                                            std::chrono::milliseconds limit);
};
