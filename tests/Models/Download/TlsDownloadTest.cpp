// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/HttpDownloadSession.h"
#include "Models/Download/LocalHttpServer.h"
#include "Models/Download/RecordingDelegate.h"

#include <QFile>
#include <QSslCertificate>
#include <QSslKey>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

using Resource = LocalHttpServer::Resource;

namespace {

// The self-signed certificate of the test server, for 127.0.0.1.
QSslCertificate serverCertificate()
{
    return QSslCertificate::fromPath(QFINDTESTDATA("data/test-server.crt")).value(0);
}

QSslConfiguration serverConfiguration()
{
    QFile file(QFINDTESTDATA("data/test-server.key"));
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    if (file.open(QIODevice::ReadOnly))
        configuration.setPrivateKey(QSslKey(&file, QSsl::Ec));
    configuration.setLocalCertificate(serverCertificate());
    return configuration;
}

} // namespace

// Certificate checks and redirects over TLS.
class TlsDownloadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void unknownCertificateIsRefused();
    void trustedCertificateIsAccepted();
    void certificateOfAnotherHostIsRefused();
    void redirectToAnInsecureAddressIsRefused();
    void redirectToASecureAddressIsFollowed();

private:
    void trustTheServer();
    void download(const QUrl &url);

    QSslConfiguration m_systemConfiguration = QSslConfiguration::defaultConfiguration();
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<LocalHttpServer> m_server;
    std::unique_ptr<RecordingDelegate> m_delegate;
    std::unique_ptr<HttpDownloadSession> m_session;
};

void TlsDownloadTest::init()
{
    QVERIFY(!serverCertificate().isNull());
    QVERIFY(!serverConfiguration().privateKey().isNull());
    m_folder = std::make_unique<QTemporaryDir>();
    m_server = std::make_unique<LocalHttpServer>(serverConfiguration());
    Resource model;
    model.content = "a model";
    m_server->set(u"/model.gguf"_s, model);
    m_delegate = std::make_unique<RecordingDelegate>();
    m_session = std::make_unique<HttpDownloadSession>(m_folder->path());
    m_session->setDelegate(m_delegate.get());
}

void TlsDownloadTest::cleanup()
{
    m_session.reset();
    QSslConfiguration::setDefaultConfiguration(m_systemConfiguration);
}

void TlsDownloadTest::trustTheServer()
{
    QSslConfiguration trusting = m_systemConfiguration;
    trusting.addCaCertificate(serverCertificate());
    QSslConfiguration::setDefaultConfiguration(trusting);
}

void TlsDownloadTest::download(const QUrl &url)
{
    m_session->start({url, 0});
    QTRY_COMPARE(m_delegate->endCount(), 1);
}

void TlsDownloadTest::unknownCertificateIsRefused()
{
    download(m_server->url(u"/model.gguf"_s));
    QVERIFY2(m_delegate->lastMessage().startsWith(u"The download server's identity couldn't be verified: "_s),
             qPrintable(m_delegate->lastMessage()));
    QCOMPARE(m_delegate->record().finished.size(), 0);
    QCOMPARE(m_server->requests().size(), 0);
}

void TlsDownloadTest::trustedCertificateIsAccepted()
{
    trustTheServer();
    download(m_server->url(u"/model.gguf"_s));
    QCOMPARE(m_delegate->lastMessage(), QString());
    QCOMPARE(m_delegate->record().content, "a model");
}

void TlsDownloadTest::certificateOfAnotherHostIsRefused()
{
    trustTheServer();
    QUrl url = m_server->url(u"/model.gguf"_s);
    url.setHost(u"localhost"_s);
    download(url);
    QVERIFY2(m_delegate->lastMessage().startsWith(u"The download server's identity couldn't be verified: "_s),
             qPrintable(m_delegate->lastMessage()));
    QCOMPARE(m_server->requests().size(), 0);
}

void TlsDownloadTest::redirectToAnInsecureAddressIsRefused()
{
    trustTheServer();
    LocalHttpServer insecure;
    Resource redirect;
    redirect.status = 302;
    redirect.headers = {{"Location", insecure.url(u"/model.gguf"_s).toEncoded()}};
    m_server->set(u"/moved.gguf"_s, redirect);
    download(m_server->url(u"/moved.gguf"_s));
    QCOMPARE(m_delegate->lastMessage(), u"The download server redirected to an address that isn't secure."_s);
    QCOMPARE(insecure.requests().size(), 0);
}

void TlsDownloadTest::redirectToASecureAddressIsFollowed()
{
    trustTheServer();
    LocalHttpServer insecure;
    Resource redirect;
    redirect.status = 302;
    redirect.headers = {{"Location", m_server->url(u"/model.gguf"_s).toEncoded()}};
    insecure.set(u"/moved.gguf"_s, redirect);
    download(insecure.url(u"/moved.gguf"_s));
    QCOMPARE(m_delegate->record().content, "a model");
}

QTEST_GUILESS_MAIN(TlsDownloadTest)
#include "TlsDownloadTest.moc"
