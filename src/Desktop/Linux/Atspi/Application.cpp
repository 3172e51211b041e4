// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Application.h"

#include "Desktop/Linux/Atspi/Bus.h"
#include "Desktop/Linux/DBus/DBusReply.h"
#include "Desktop/PlatformError.h"

#include <QCoroFuture>
#include <QDBusError>
#include <QElapsedTimer>
#include <QPromise>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Enough to keep the bus and both processes busy. More calls in flight increase latency and block the main
// thread for longer.
constexpr qsizetype mostUnderWay = 64;

// Pipelines many calls to one application, with a bounded number in flight, so that they share the round-trip
// latency. Keeps itself alive until the last reply. Thread: main.
class Batch : public std::enable_shared_from_this<Batch>
{
public:
    enum class End {
        Answered,    // every call has a reply, possibly an error
        Silent,      // no reply at all within a call's timeout, or the total time exceeded
        Gone,        // the application has left the bus
        Disconnected // the bus connection is lost
    };

    struct Limits
    {
        std::chrono::milliseconds call; // for each call
        std::chrono::milliseconds all;  // for all together
    };

    // `service` is the application that Silent and Gone refer to; calls to other services may fail
    // individually.
    Batch(const QDBusConnection &bus, const QString &service, const QList<QDBusMessage> &calls,
          Limits limits);

    // Sends the calls, at least one. The future resolves to the outcome: immediately on failure, or once all
    // calls are answered.
    QFuture<End> start();

    // In the order of the calls; valid only after Answered.
    const QList<QDBusMessage> &replies() const { return m_replies; }

private:
    void fill();
    void send(qsizetype position);
    void accept(qsizetype position, const QDBusMessage &reply, qint64 sentAt);
    void finish(End end);
    End endAfter(const QDBusMessage &call, const QDBusMessage &reply, qint64 sentAt) const;

    QDBusConnection m_bus;
    QString m_service;
    QList<QDBusMessage> m_calls;
    QList<QDBusMessage> m_replies;
    Limits m_limits;
    QPromise<End> m_promise;
    QElapsedTimer m_clock;
    qint64 m_lastAnswer = -1; // ms on m_clock
    qsizetype m_next = 0;
    qsizetype m_underWay = 0;
    bool m_finished = false;
};

Batch::Batch(const QDBusConnection &bus, const QString &service, const QList<QDBusMessage> &calls,
             Limits limits)
    : m_bus(bus), m_service(service), m_calls(calls), m_replies(calls.size()), m_limits(limits)
{
}

QFuture<Batch::End> Batch::start()
{
    m_clock.start();
    m_promise.start();
    const QFuture<End> future = m_promise.future();
    fill();
    return future;
}

void Batch::fill()
{
    while (!m_finished && m_underWay < mostUnderWay && m_next < m_calls.size()) {
        // A call on a closed connection might never finish.
        if (m_bus.isConnected())
            send(m_next++);
        else
            finish(End::Disconnected);
    }
}

void Batch::send(qsizetype position)
{
    ++m_underWay;
    const qint64 sentAt = m_clock.elapsed();
    const QDBusPendingCall pending =
        m_bus.asyncCall(m_calls.at(position), static_cast<int>(m_limits.call.count()));
    DBusReply::deliver(pending, [self = shared_from_this(), position, sentAt](const QDBusMessage &reply) {
        self->accept(position, reply, sentAt);
    });
}

void Batch::accept(qsizetype position, const QDBusMessage &reply, qint64 sentAt)
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

void Batch::finish(End end)
{
    m_finished = true;
    m_promise.addResult(end);
    m_promise.finish();
}

Batch::End Batch::endAfter(const QDBusMessage &call, const QDBusMessage &reply, qint64 sentAt) const
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
    // The bus also reports NoReply, but early, if the application disconnects before it replies.
    if (m_clock.elapsed() - sentAt < m_limits.call.count() - 50)
        return End::Gone;
    return m_lastAnswer < sentAt ? End::Silent : End::Answered;
}

PlatformError failure(Batch::End end, const QString &name)
{
    if (end == Batch::End::Gone)
        return PlatformError(u"“%1” has quit."_s.arg(name));
    if (end == Batch::End::Disconnected)
        return PlatformError(u"The desktop's accessibility service has stopped."_s);
    return PlatformError(u"“%1” isn't responding."_s.arg(name));
}

} // namespace

AtspiApplication::AtspiApplication(const QDBusConnection &bus, const AtspiReference &root,
                                   const QString &processName)
    : m_bus(bus), m_root(root), m_name(processName)
{
}

QCoro::Task<std::shared_ptr<AtspiApplication>>
AtspiApplication::create(QDBusConnection bus, AtspiReference root, QString processName)
{
    const auto application = std::make_shared<AtspiApplication>(bus, root, processName);
    const QList<QDBusMessage> calls{
        Atspi::getName(root),
        Atspi::getToolkitName(root),
    };
    const QList<QDBusMessage> replies = co_await exchange(application, calls);
    const QString name = Atspi::label(Atspi::text(replies.at(0)).value_or(QString()), AtspiToolkit::Other);
    if (!name.isEmpty())
        application->m_name = name;
    application->m_toolkit = Atspi::toolkit(Atspi::text(replies.at(1)).value_or(QString()));
    co_return application;
}

const QDBusConnection &AtspiApplication::queryConnection() const
{
    return m_peer ? m_peer->connection() : m_bus;
}

void AtspiApplication::setPeer(std::shared_ptr<AtspiPeer> peer)
{
    m_peer = std::move(peer);
}

QCoro::Task<QList<QDBusMessage>> AtspiApplication::exchange(std::shared_ptr<AtspiApplication> application,
                                                            QList<QDBusMessage> calls)
{
    co_return co_await exchangeOver(application->queryConnection(), application, calls);
}

QCoro::Task<QDBusMessage> AtspiApplication::act(std::shared_ptr<AtspiApplication> application,
                                                QDBusMessage call)
{
    const QList<QDBusMessage> calls{call};
    const QList<QDBusMessage> replies = co_await exchangeOver(application->bus(), application, calls);
    co_return replies.constFirst();
}

QCoro::Task<QList<QDBusMessage>> AtspiApplication::exchangeOver(QDBusConnection connection,
                                                                std::shared_ptr<AtspiApplication> application,
                                                                QList<QDBusMessage> calls)
{
    if (calls.isEmpty())
        co_return {};
    if (application->m_waited >= walkLimit)
        throw failure(Batch::End::Silent, application->m_name);
    QElapsedTimer waiting;
    waiting.start();
    const Batch::Limits limits{callLimit, walkLimit - application->m_waited};
    const auto batch = std::make_shared<Batch>(connection, application->m_root.service, calls, limits);
    const QFuture<Batch::End> future = batch->start();
    Batch::End end = co_await future;
    // A lost peer connection means that the application has quit.
    if (end == Batch::End::Disconnected && connection.name() != application->m_bus.name())
        end = Batch::End::Gone;
    application->m_waited += std::chrono::milliseconds(waiting.elapsed());
    if (end != Batch::End::Answered)
        throw failure(end, application->m_name);
    co_return batch->replies();
}

QCoro::Task<QList<QDBusMessage>> Atspi::exchangeAtOnce(QDBusConnection bus, QString service,
                                                       QList<QDBusMessage> calls)
{
    const Batch::Limits limits{AtspiApplication::callLimit, AtspiApplication::callLimit};
    const auto batch = std::make_shared<Batch>(bus, service, calls, limits);
    const QFuture<Batch::End> future = batch->start();
    if (co_await future != Batch::End::Answered)
        throw PlatformError(u"The desktop's accessibility service isn't responding."_s);
    co_return batch->replies();
}
