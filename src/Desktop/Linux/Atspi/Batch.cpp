// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Batch.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>

namespace {

// Enough that the bus and both processes always have something to do; with more, answers start to come later
// than they have to, and the main thread has more to do at once.
constexpr qsizetype mostUnderWay = 64;

} // namespace

AtspiBatch::AtspiBatch(const QDBusConnection &bus, const QString &service, const QList<QDBusMessage> &calls,
                       Limits limits)
    : m_bus(bus), m_service(service), m_calls(calls), m_replies(calls.size()), m_limits(limits)
{
}

QFuture<AtspiBatch::End> AtspiBatch::start()
{
    m_clock.start();
    m_promise.start();
    const QFuture<End> future = m_promise.future();
    fill();
    return future;
}

void AtspiBatch::fill()
{
    while (!m_finished && m_underWay < mostUnderWay && m_next < m_calls.size()) {
        // What is sent over a closed connection may have no end to watch for.
        if (m_bus.isConnected())
            send(m_next++);
        else
            finish(End::Disconnected);
    }
}

void AtspiBatch::send(qsizetype position)
{
    ++m_underWay;
    const qint64 sentAt = m_clock.elapsed();
    const QDBusPendingCall pending =
        m_bus.asyncCall(m_calls.at(position), static_cast<int>(m_limits.call.count()));
    auto *watcher = new QDBusPendingCallWatcher(pending);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [self = shared_from_this(), position, sentAt](QDBusPendingCallWatcher *finished) {
                         finished->deleteLater();
                         self->accept(position, finished->reply(), sentAt);
                     });
}

void AtspiBatch::accept(qsizetype position, const QDBusMessage &reply, qint64 sentAt)
{
    if (m_finished)
        return;
    --m_underWay;
    m_replies[position] = reply;
    const End end = endAfter(m_calls.at(position), reply, sentAt);
    if (end != End::Answered) {
        finish(end);
        return;
    }
    m_lastAnswer = m_clock.elapsed();
    fill();
    if (!m_finished && m_underWay == 0)
        finish(End::Answered);
}

void AtspiBatch::finish(End end)
{
    m_finished = true;
    m_promise.addResult(end);
    m_promise.finish();
}

AtspiBatch::End AtspiBatch::endAfter(const QDBusMessage &call, const QDBusMessage &reply, qint64 sentAt) const
{
    if (m_clock.hasExpired(m_limits.all.count()))
        return End::Silent;
    if (reply.type() == QDBusMessage::ReplyMessage)
        return End::Answered;
    const QDBusError::ErrorType error = QDBusError(reply).type();
    if (error == QDBusError::Disconnected || !m_bus.isConnected())
        return End::Disconnected;
    if (call.service() != m_service)
        return End::Answered;
    if (error == QDBusError::ServiceUnknown)
        return End::Gone;
    if (error != QDBusError::NoReply && error != QDBusError::Timeout)
        return End::Answered;
    // The bus says the same of an application that left with the call unanswered, but says it early.
    if (m_clock.elapsed() - sentAt < m_limits.call.count() - 50)
        return End::Gone;
    return m_lastAnswer < sentAt ? End::Silent : End::Answered;
}
