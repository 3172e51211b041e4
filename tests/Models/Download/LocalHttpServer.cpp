// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/LocalHttpServer.h"

#include <QHostAddress>
#include <QSslServer>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

LocalHttpServer::Request parsedRequest(const QByteArray &text)
{
    const QList<QByteArray> lines = text.split('\n');
    LocalHttpServer::Request request;
    request.path = QString::fromLatin1(lines.first().split(' ').value(1));
    for (const QByteArray &line : lines.mid(1)) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0)
            request.headers.insert(line.left(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    return request;
}

std::unique_ptr<QTcpServer> tlsServer(const QSslConfiguration &tls)
{
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(tls);
    return server;
}

struct Answer
{
    int status = 200;
    QByteArray body;
    QList<LocalHttpServer::Header> headers;
};

// The answer to a request, partial if it names a range.
Answer answerTo(const LocalHttpServer::Request &request, const LocalHttpServer::Resource &resource)
{
    using Ranges = LocalHttpServer::Resource::Ranges;
    const QByteArray range = request.headers.value("range");
    const QByteArray condition = request.headers.value("if-range");
    const bool unchanged = condition == resource.entityTag || condition == resource.lastModified;
    const bool partial =
        resource.ranges == Ranges::SentUnasked || (resource.ranges == Ranges::Supported && unchanged);
    if (!range.isEmpty() && resource.ranges == Ranges::Refused)
        return {416, {}, {}};
    if (range.isEmpty() || !partial || resource.status != 200)
        return {resource.status, resource.content, {}};

    const qint64 first = range.mid(6).chopped(1).toLongLong();
    const QByteArray total = QByteArray::number(resource.content.size());
    const QByteArray span =
        QByteArray::number(first) + "-" + QByteArray::number(resource.content.size() - 1) + "/" + total;
    return {206, resource.content.mid(first), {{"Content-Range", "bytes " + span}}};
}

} // namespace

LocalHttpServer::LocalHttpServer() : LocalHttpServer(std::make_unique<QTcpServer>(), u"http"_s) {}

LocalHttpServer::LocalHttpServer(const QSslConfiguration &tls) : LocalHttpServer(tlsServer(tls), u"https"_s)
{
}

LocalHttpServer::LocalHttpServer(std::unique_ptr<QTcpServer> server, const QString &scheme)
    : m_server(std::move(server)), m_scheme(scheme)
{
    connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, this, &LocalHttpServer::accept);
    if (!m_server->listen(QHostAddress::LocalHost))
        qFatal("The test's server cannot listen: %s", qUtf8Printable(m_server->errorString()));
}

QUrl LocalHttpServer::url(const QString &path) const
{
    return QUrl(u"%1://127.0.0.1:%2%3"_s.arg(m_scheme).arg(m_server->serverPort()).arg(path));
}

void LocalHttpServer::release()
{
    for (const Held &held : std::exchange(m_held, {})) {
        if (!held.socket)
            continue;
        held.socket->write(held.rest);
        held.socket->disconnectFromHost();
    }
}

void LocalHttpServer::release(qint64 bytes)
{
    for (Held &held : m_held) {
        if (!held.socket)
            continue;
        held.socket->write(held.rest.left(bytes));
        held.socket->flush();
        held.rest.remove(0, bytes);
    }
}

void LocalHttpServer::accept()
{
    while (QTcpSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { receive(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        receive(socket);
    }
}

void LocalHttpServer::receive(QTcpSocket *socket)
{
    QByteArray &received = m_received[socket];
    received += socket->readAll();
    if (!received.contains("\r\n\r\n"))
        return;
    const Request request = parsedRequest(received);
    m_received.remove(socket);
    m_requests.append(request);
    answer(socket, request);
}

void LocalHttpServer::answer(QTcpSocket *socket, const Request &request)
{
    Resource missing;
    missing.status = 404;
    missing.content = "There is no such thing here.";
    const Resource resource = m_resources.value(request.path, missing);
    const Answer answer = answerTo(request, resource);

    QByteArray head =
        "HTTP/1.1 " + QByteArray::number(answer.status) + " As scripted\r\nConnection: close\r\n";
    QList<Header> headers = resource.headers + answer.headers;
    if (!resource.entityTag.isEmpty())
        headers.append({"ETag", resource.entityTag});
    if (!resource.lastModified.isEmpty())
        headers.append({"Last-Modified", resource.lastModified});
    if (resource.length == Resource::Length::Announced) {
        const qint64 length = resource.announcedLength < 0 ? answer.body.size() : resource.announcedLength;
        headers.append({"Content-Length", QByteArray::number(length)});
    }
    for (const auto &[name, value] : std::as_const(headers))
        head += name + ": " + value + "\r\n";
    socket->write(head + "\r\n");
    sendBody(socket, answer.body, resource);
}

void LocalHttpServer::sendBody(QTcpSocket *socket, const QByteArray &body, const Resource &resource)
{
    if (resource.holdAfter >= 0) {
        socket->write(body.left(resource.holdAfter));
        m_held.append({socket, body.mid(resource.holdAfter)});
        return;
    }
    socket->write(resource.dropAfter < 0 ? body : body.left(resource.dropAfter));
    socket->disconnectFromHost();
}
