// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QFuture>

#include <functional>

class QDBusPendingCallWatcher;

// Delivers replies to D-Bus calls, each exactly once. Thread: main.
//
// QDBusPendingCallWatcher can emit finished() twice if the connection is lost: QtDBus stores the error
// without the lock under which the watcher checks for it. A coroutine that awaits a QDBusPendingCall directly
// would then be resumed again after its frame has been freed. So use only these functions to wait for such
// calls.
namespace DBusReply {

// The reply or error, to be awaited.
QFuture<QDBusMessage> of(const QDBusPendingCall &call);

// The same with a callback, called by the event loop. The connection must have been open when the call was
// sent.
using Receiver = std::function<void(const QDBusMessage &reply)>;
void deliver(const QDBusPendingCall &call, Receiver receiver);

// The same for the watcher's call; deletes the watcher afterwards.
void deliver(QDBusPendingCallWatcher *watcher, Receiver receiver);

} // namespace DBusReply
