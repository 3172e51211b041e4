// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/DBus/DBusQuestion.h"

#include "Desktop/Linux/DBus/DBusReply.h"

#include <QCoroFuture>

QCoro::Task<QVariantList> DBusQuestion::answer(DBusQuestion question, Bus connect, BoundedQueue &worker,
                                               std::chrono::milliseconds limit)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(question.service, question.path, question.interface, question.method);
    call.setArguments(question.arguments);
    call.setAutoStartService(false);
    try {
        const QDBusConnection bus = co_await worker.run(connect);
        const QFuture<QDBusMessage> answer =
            DBusReply::of(bus.asyncCall(call, static_cast<int>(limit.count())));
        const QDBusMessage reply = co_await answer;
        if (reply.type() == QDBusMessage::ReplyMessage)
            co_return reply.arguments();
    } catch (const PlatformError &) {
        // A bus that doesn't respond counts as absent.
    }
    co_return QVariantList();
}
