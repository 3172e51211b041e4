// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QHostAddress>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>

// A web server on this machine for a test's own pages. A page tells what became of it by posting text to
// "/report". As Firefox's proxy it also learns which other sites the browser wants, and lets it reach none.
// Main thread, from the event loop.
class LocalSite : public QObject
{
public:
    LocalSite();

    quint16 port() const { return m_server.serverPort(); }
    QString address(const QString &path) const;

    // The page at that path, a body in HTML.
    void setPage(const QString &path, const QString &title, const QString &body);

    // What the page posted last; nothing yet: a null text.
    QString report() const { return m_report; }
    void clearReport() { m_report = QString(); }

    // The paths that were asked for, with their queries.
    QStringList visits() const { return m_visits; }

    // The sites, as "host:port", that the browser wanted over HTTPS.
    QStringList foreignSites() const { return m_foreignSites; }

private:
    void serve(QTcpSocket *socket);
    QByteArray answerTo(const QByteArray &method, const QString &target, const QByteArray &body);

    QTcpServer m_server;
    QHash<QString, QString> m_pages;
    QString m_report;
    QStringList m_visits;
    QStringList m_foreignSites;
};
