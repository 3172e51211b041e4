// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <memory>

// A small local HTTP server with scripted answers, one request per connection. Lives on the main thread and
// answers from its event loop.
class LocalHttpServer : public QObject
{
    Q_OBJECT

public:
    using Header = QPair<QByteArray, QByteArray>;

    // A resource and the server's scripted misbehaviour.
    struct Resource
    {
        QByteArray content;
        int status = 200;
        QByteArray entityTag;
        QByteArray lastModified;
        QList<Header> headers;
        enum class Length { Announced, Unknown } length = Length::Announced;
        qint64 announcedLength = -1; // overrides the true length
        enum class Ranges { Supported, Ignored, Refused, SentUnasked } ranges = Ranges::Supported;
        qint64 dropAfter = -1; // closes the connection after this many bytes of the body
        qint64 holdAfter = -1; // sends at most this many bytes of the body until `release`
    };

    struct Request
    {
        QString path;
        QHash<QByteArray, QByteArray> headers; // keys in lower case
    };

    LocalHttpServer();
    // Over TLS, with the configuration's key and certificate.
    explicit LocalHttpServer(const QSslConfiguration &tls);

    QUrl url(const QString &path) const;
    void set(const QString &path, const Resource &resource) { m_resources.insert(path, resource); }

    // Sends the rest of held bodies, or `bytes` more of them.
    void release();
    void release(qint64 bytes);

    const QList<Request> &requests() const { return m_requests; }

private:
    explicit LocalHttpServer(std::unique_ptr<QTcpServer> server, const QString &scheme);

    void accept();
    void receive(QTcpSocket *socket);
    void answer(QTcpSocket *socket, const Request &request);
    void sendBody(QTcpSocket *socket, const QByteArray &body, const Resource &resource);

    struct Held
    {
        QPointer<QTcpSocket> socket;
        QByteArray rest;
    };

    std::unique_ptr<QTcpServer> m_server;
    QString m_scheme;
    QHash<QString, Resource> m_resources;
    QHash<QTcpSocket *, QByteArray> m_received;
    QList<Request> m_requests;
    QList<Held> m_held;
};
