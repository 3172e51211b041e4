// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/DBus/DBusReply.h"

#include <QDBusPendingCallWatcher>
#include <QPromise>

#include <memory>
#include <utility>

QFuture<QDBusMessage> DBusReply::of(const QDBusPendingCall &call)
{
    const auto promise = std::make_shared<QPromise<QDBusMessage>>();
    promise->start();
    const auto settle = [promise](const QDBusMessage &reply) {
        promise->addResult(reply);
        promise->finish();
    };
    // A watcher never emits finished() for a call that failed because there was no connection.
    if (call.isFinished())
        settle(call.reply());
    else
        deliver(call, settle);
    return promise->future();
}

void DBusReply::deliver(const QDBusPendingCall &call, Receiver receiver)
{
    deliver(new QDBusPendingCallWatcher(call), std::move(receiver));
}

void DBusReply::deliver(QDBusPendingCallWatcher *watcher, Receiver receiver)
{
    const auto finish = [receiver = std::move(receiver)](QDBusPendingCallWatcher *finished) {
        finished->deleteLater();
        receiver(finished->reply());
    };
    const auto once = static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::SingleShotConnection);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, finish, once);
}
