// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QObject>
#include <QPromise>
#include <QVariantMap>

#include <chrono>
#include <memory>

// The desktop portals (org.freedesktop.portal), on a connection of their own: portals know a program by its
// connection, which must introduce itself before all other calls. Every operation throws PlatformError if the
// session bus or the portals don't answer. Thread: main.
class PortalBus : public QObject
{
    Q_OBJECT

public:
    PortalBus();
    ~PortalBus() override;

    // Whether the user decides before the portal responds.
    enum class Partner { Portal, User };

    // Calls a method that creates a request object, and returns the results of its response. `arguments` are
    // those before the options. Throws PlatformError with these sentences if the user refuses or the portal
    // can't do it.
    struct Sentences
    {
        QString refusal;
        QString failure;
    };
    QCoro::Task<QVariantMap> request(QString interface, QString method, QVariantList arguments,
                                     QVariantMap options, Partner partner, Sentences sentences);

    struct Response
    {
        uint code = 0; // 0 is success
        QVariantMap results;
    };

    // The same, but returns any response.
    QCoro::Task<Response> response(QString interface, QString method, QVariantList arguments,
                                   QVariantMap options, Partner partner, Sentences sentences);

    // Connects the portals' signal to a slot of the receiver; false if that isn't possible. After a request
    // only.
    bool listen(const QString &interface, const QString &signal, QObject *receiver, const char *slot);

    // Calls a method of the object at `path` without waiting for the reply.
    void send(const QString &path, const QString &interface, const QString &method,
              const QVariantList &arguments);

    // The same, and waits for the reply.
    QCoro::Task<QDBusMessage> call(QString path, QString interface, QString method, QVariantList arguments);

    // Where the portals are.
    static QString path();

    // An identifier for a new request or session of this connection.
    QString newToken();

private Q_SLOTS:
    void respond(uint code, const QVariantMap &results, const QDBusMessage &signal);

private:
    using Pending = std::shared_ptr<QPromise<Response>>;

    QCoro::Task<void> connect();
    void connectToBus();
    QDBusConnection connection() const { return QDBusConnection(m_connectionName); }

    const QString m_connectionName;
    bool m_isConnected = false;
    int m_tokens = 0;
    QHash<QString, Pending> m_pending; // by the path of the request
    BoundedQueue m_worker{QStringLiteral("orvane.portals"), QStringLiteral("The session bus")};
};
