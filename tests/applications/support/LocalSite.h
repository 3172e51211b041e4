// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QHostAddress>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>

// A local web server for a test's pages. Pages report back by posting text to "/report". As the browsers'
// proxy it also records requests for other sites, and refuses them. Requires the event loop. Thread: main.
class LocalSite : public QObject
{
public:
    LocalSite();

    quint16 port() const { return m_server.serverPort(); }
    QString address(const QString &path) const;

    // Serves a page with this HTML body at the path.
    void setPage(const QString &path, const QString &title, const QString &body);

    // The latest report; a null string if there is none.
    QString report() const { return m_report; }
    void clearReport() { m_report = QString(); }

    // The requested paths, with their queries.
    QStringList visits() const { return m_visits; }

    // The other sites requested over HTTPS, as "host:port".
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
