// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QFuture>

#include <functional>

class QDBusPendingCallWatcher;

// Replies to calls on D-Bus, each delivered exactly once. Main thread.
//
// QDBusPendingCallWatcher can emit finished() twice for a call over a connection that is lost: QtDBus stores
// the error without the lock under which the watcher looks for it. A coroutine that awaits a QDBusPendingCall
// directly is then resumed twice, the second time after its frame has been freed. So nobody else awaits or
// watches such calls.
namespace DBusReply {

// The reply, or the error that the call ended with; to be awaited.
QFuture<QDBusMessage> of(const QDBusPendingCall &call);

// The same for a receiver, which the event loop calls. The connection was open when the call was sent.
using Receiver = std::function<void(const QDBusMessage &reply)>;
void deliver(const QDBusPendingCall &call, Receiver receiver);

// The same for the call of a watcher, which is deleted afterwards.
void deliver(QDBusPendingCallWatcher *watcher, Receiver receiver);

} // namespace DBusReply
