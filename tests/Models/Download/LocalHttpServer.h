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

// A small HTTP server on this machine that answers as each test tells it, one request a connection. Lives on
// the main thread and answers from its event loop.
class LocalHttpServer : public QObject
{
    Q_OBJECT

public:
    using Header = QPair<QByteArray, QByteArray>;

    // What the server has under a path, and how it misbehaves.
    struct Resource
    {
        QByteArray content;
        int status = 200;
        QByteArray entityTag;
        QByteArray lastModified;
        QList<Header> headers;
        enum class Length { Announced, Unknown } length = Length::Announced;
        qint64 announcedLength = -1; // instead of the true one
        enum class Ranges { Supported, Ignored, Refused, SentUnasked } ranges = Ranges::Supported;
        qint64 dropAfter = -1; // closes the connection after so many bytes of the body
        qint64 holdAfter = -1; // sends no more than so many bytes of the body until `release`
    };

    struct Request
    {
        QString path;
        QHash<QByteArray, QByteArray> headers; // by lower-cased name
    };

    LocalHttpServer();
    // Over TLS, with the key and certificate of the configuration.
    explicit LocalHttpServer(const QSslConfiguration &tls);

    QUrl url(const QString &path) const;
    void set(const QString &path, const Resource &resource) { m_resources.insert(path, resource); }

    // Sends the rest of what is held, or so many bytes more of it, at once.
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
