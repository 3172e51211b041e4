// SPDX-License-Identifier: Apache-2.0
#include "applications/support/LocalSite.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

// Reports are sent one at a time, so that they can't overtake each other.
constexpr auto pageFrame = R"(<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>%1</title><script>
let latest = null, isSending = false;
async function report(text) {
    latest = text;
    if (isSending) return;
    isSending = true;
    while (latest !== null) {
        const body = latest;
        latest = null;
        await fetch('/report', {method: 'POST', body});
    }
    isSending = false;
}
</script></head><body>%2</body></html>)";

QByteArray response(const char *status, const QByteArray &body)
{
    return QByteArray("HTTP/1.1 ") + status +
           "\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: " +
           QByteArray::number(body.size()) + "\r\nCache-Control: no-store\r\nConnection: close\r\n\r\n" +
           body;
}

// The value of a header, or an empty one.
QByteArray header(const QList<QByteArray> &lines, const QByteArray &name)
{
    for (const QByteArray &line : lines) {
        const qsizetype colon = line.indexOf(':');
        if (line.first(qMax<qsizetype>(colon, 0)).compare(name, Qt::CaseInsensitive) == 0)
            return line.mid(colon + 1).trimmed();
    }
    return {};
}

} // namespace

LocalSite::LocalSite()
{
    if (!m_server.listen(QHostAddress::LocalHost))
        qFatal("no port for the local site");
    connect(&m_server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = m_server.nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
}

QString LocalSite::address(const QString &path) const
{
    return u"http://127.0.0.1:%1%2"_s.arg(port()).arg(path);
}

void LocalSite::setPage(const QString &path, const QString &title, const QString &body)
{
    m_pages.insert(path, QString::fromUtf8(pageFrame).arg(title, body));
}

// Answers a request once it is complete (requests are small), and closes the connection.
void LocalSite::serve(QTcpSocket *socket)
{
    const QByteArray received = socket->peek(socket->bytesAvailable());
    const qsizetype headEnd = received.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return;
    const QList<QByteArray> lines = received.first(headEnd).split('\n');
    const qsizetype bodySize = header(lines, "Content-Length").toLongLong();
    const QByteArray body = received.mid(headEnd + 4);
    if (body.size() < bodySize)
        return;
    socket->skip(socket->bytesAvailable());
    const QList<QByteArray> request = lines.first().trimmed().split(' ');
    socket->write(answerTo(request.value(0), QString::fromUtf8(request.value(1)), body));
    socket->disconnectFromHost();
}

QByteArray LocalSite::answerTo(const QByteArray &method, const QString &target, const QByteArray &body)
{
    if (method == "CONNECT") {
        m_foreignSites << target;
        return response("502 Bad Gateway", {});
    }
    m_visits << target;
    const QString path = QUrl(target).path();
    if (method == "POST" && path == "/report"_L1) {
        m_report = QString::fromUtf8(body.isNull() ? QByteArray("") : body);
        return response("204 No Content", {});
    }
    const auto page = m_pages.constFind(path);
    return page == m_pages.constEnd() ? response("404 Not Found", {}) : response("200 OK", page->toUtf8());
}
