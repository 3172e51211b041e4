// SPDX-License-Identifier: Apache-2.0
// Which processes are connected to a local socket.
#include "Desktop/Linux/Processes/SocketClients.h"

#include <QCoreApplication>
#include <QLocalServer>
#include <QLocalSocket>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class SocketClientsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_server.listen(m_folder.filePath(u"server"_s))); }

    void onlyTheConnectedOneIsAClient()
    {
        QProcess stranger;
        stranger.start(u"/bin/cat"_s, {});
        QVERIFY(stranger.waitForStarted());
        const QList<qint64> both{stranger.processId(), QCoreApplication::applicationPid()};
        QCOMPARE(clientsAmong(both, path()), QList<qint64>());
        QLocalSocket client;
        client.connectToServer(m_server.fullServerName());
        QVERIFY(m_server.waitForNewConnection(30'000));
        QCOMPARE(clientsAmong(both, path()), QList{QCoreApplication::applicationPid()});
        client.abort();
        QCOMPARE(clientsAmong(both, path()), QList<qint64>());
        stranger.closeWriteChannel();
        stranger.waitForFinished();
    }

    void aConnectionKnowsWhereItsServerListens()
    {
        QLocalSocket client;
        QCOMPARE(peerPath(client.socketDescriptor()), QByteArray());
        client.connectToServer(m_server.fullServerName());
        QVERIFY(client.waitForConnected());
        QCOMPARE(peerPath(client.socketDescriptor()), path());
    }

    void nobodyIsConnectedToNoSocket()
    {
        const QList<qint64> own{QCoreApplication::applicationPid()};
        QCOMPARE(clientsAmong(own, "/nothing/listens/here"), QList<qint64>());
        QCOMPARE(clientsAmong(own, {}), QList<qint64>());
        QCOMPARE(clientsAmong({}, path()), QList<qint64>());
    }

private:
    QByteArray path() const { return m_server.fullServerName().toUtf8(); }

    QTemporaryDir m_folder;
    QLocalServer m_server;
};

QTEST_GUILESS_MAIN(SocketClientsTest)
#include "SocketClientsTest.moc"
