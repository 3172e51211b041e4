// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QFuture>
#include <QList>
#include <QPromise>
#include <QString>

#include <chrono>
#include <memory>

// Many calls to one application, a bounded number of them under way at a time: an answer takes a moment to
// come and go, and that moment is then shared by all. Made and used on the main thread; it keeps itself alive
// until the last answer is in.
class AtspiBatch : public std::enable_shared_from_this<AtspiBatch>
{
public:
    enum class End {
        Answered,    // every call has its reply, which may be an error
        Silent,      // the application answered nothing at all for as long as a call may take, or too little
                     // of everything in the time for all
        Gone,        // the application has left the bus
        Disconnected // the bus itself has gone
    };

    struct Limits
    {
        std::chrono::milliseconds call; // for each call
        std::chrono::milliseconds all;  // for all together
    };

    // `service` is the application that counts for Silent and Gone; calls to others may fail singly.
    AtspiBatch(const QDBusConnection &bus, const QString &service, const QList<QDBusMessage> &calls,
               Limits limits);

    // Sends the calls, of which there is at least one. The future is of how it ended; with any end but
    // Answered, at once.
    QFuture<End> start();

    // In the order of the calls; of use after the end Answered only.
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
