// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/HttpDownloadSession.h"

#include "Models/Download/LocalHttpServer.h"
#include "Models/Download/RecordingDelegate.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <atomic>
#include <csignal>
#include <future>
#include <memory>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

using Resource = LocalHttpServer::Resource;

namespace {

constexpr qint64 modelSize = 300'000;
constexpr qint64 firstPart = 100'000;

QByteArray someContent(quint32 seed = 1)
{
    QByteArray content(modelSize, Qt::Uninitialized);
    QRandomGenerator random(seed);
    for (char &byte : content)
        byte = static_cast<char>(random.bounded(256));
    return content;
}

Resource model()
{
    Resource resource;
    resource.content = someContent();
    resource.entityTag = "\"version-1\"";
    return resource;
}

QByteArray sha256(const QByteArray &content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Sha256);
}

// Closes every connection in the middle of the body, on a thread of its own: the end arrives together with
// the last bytes, as from a server on another computer.
class AbruptServer
{
public:
    AbruptServer()
    {
        m_thread->start();
        m_port = m_listening.get_future().get();
    }

    ~AbruptServer()
    {
        m_isOver = true;
        m_thread->wait();
    }

    QUrl url(const QString &path) const { return QUrl(u"http://127.0.0.1:%1%2"_s.arg(m_port).arg(path)); }

private:
    void serve()
    {
        QTcpServer listener;
        listener.listen(QHostAddress::LocalHost);
        m_listening.set_value(listener.serverPort());
        while (!m_isOver) {
            if (!listener.waitForNewConnection(50))
                continue;
            const std::unique_ptr<QTcpSocket> client(listener.nextPendingConnection());
            client->waitForReadyRead();
            client->write("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: 300000\r\n\r\n");
            client->write(QByteArray(firstPart, 'x'));
            client->disconnectFromHost();
            if (client->state() != QAbstractSocket::UnconnectedState)
                client->waitForDisconnected();
        }
    }

    std::promise<quint16> m_listening; // of the port
    quint16 m_port = 0;
    std::atomic<bool> m_isOver = false;
    std::unique_ptr<QThread> m_thread{QThread::create([this] { serve(); })};
};

} // namespace

// Downloads over real HTTP from a local server.
class HttpDownloadSessionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void wholeFileIsHandedOverOnce();
    void callbacksComeOnOneThreadOfTheirOwn();
    void progressNamesTheAnnouncedLength();
    void progressWithoutALengthNamesNone();
    void errorStatusHandsOverNoFile_data();
    void errorStatusHandsOverNoFile();
    void unexpectedStatusFails();
    void emptyFileFails();
    void unreachableServerFailsWithASentence();
    void silentServerFailsWithASentence();
    void aMirrorIsAskedInsteadOfTheFilesServer();
    void aMirrorThatIsNotSecureIsNotAsked_data();
    void aMirrorThatIsNotSecureIsNotAsked();
    void aProxyOfTheEnvironmentIsUsed();
    void cancelEndsWithTheCancellationCode();
    void cancelOfAnEndedDownloadDoesNothing();
    void destructionMidwayLeavesThePartWithoutACallback();

    void droppedConnectionFailsAndIsResumed();
    void everyDroppedConnectionIsReportedAsLost();
    void resumesByDateWhenThereIsNoTag();
    void withoutATagOrADateItStartsOver();
    void weakTagStartsOver();
    void changedFileStartsOver();
    void changedFileSentAsAPartStartsOver();
    void wholeAnswerToARangeRequestStartsOver();
    void refusedRangeStartsOver();
    void anotherAddressOfTheSameNameStartsOver();
    void partThatIsWholeAlreadyNeedsItsLastByteOnly();
    void fileThatIsNotTakenAwayIsKept();
    void damagedPartIsFoundByTheDigest();

    void shortDownloadIsAFailure();
    void downloadShorterThanTheRedirectSaidIsAFailure();
    void downloadLongerThanTheRedirectSaidIsAFailure();
    void bodyLongerThanAnnouncedIsCutOffAtOnce();
    void answerOfAnotherSizeThanKnownIsRefused();
    void knownDigestIsCheckedWhateverTheServerAnnounces();
    void announcedDigestIsChecked();
    void wrongDigestIsAFailureAndKeepsNothing();
    void digestOfTheRedirectIsChecked();
    void endlessRedirectsFail();
    void redirectElsewhereFails_data();
    void redirectElsewhereFails();

    void tooSmallADiskIsRefusedBeforeAnyRequest();
    void announcedLengthBeyondTheFreeSpaceIsRefused();
    void partAlreadyThereCountsForTheFreeSpace();
    void failedWriteIsReported();
    void unwritableDownloadsFolderIsReported();

    void secondSessionDoesNotWriteTheSameFile();
    void secondProcessDoesNotWriteTheSameFile();
    void killedProcessLeavesAPartThatIsResumed();

private:
    TransferOptions options() const;
    void newSession(const TransferOptions &options);
    void download(const QString &path = u"/model.gguf"_s, qint64 approximateSize = 0);
    void interruptedDownload(Resource resource);
    QByteArray requestHeader(qsizetype index, const QByteArray &name) const;
    QStringList leftOver() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<LocalHttpServer> m_server;
    std::unique_ptr<RecordingDelegate> m_delegate;
    std::unique_ptr<HttpDownloadSession> m_session;
};

void HttpDownloadSessionTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_server = std::make_unique<LocalHttpServer>();
    m_delegate = std::make_unique<RecordingDelegate>();
    newSession(options());
}

void HttpDownloadSessionTest::cleanup()
{
    m_session.reset();
    m_delegate.reset();
    m_server.reset();
    m_folder.reset();
}

TransferOptions HttpDownloadSessionTest::options() const
{
    TransferOptions result;
    result.downloadsDirectory = m_folder->filePath(u"Downloads"_s);
    result.freeSpace = &HttpDownloadSession::freeSpace;
    return result;
}

void HttpDownloadSessionTest::newSession(const TransferOptions &options)
{
    m_session.reset();
    m_session = std::make_unique<HttpDownloadSession>(options);
    m_session->setDelegate(m_delegate.get());
}

// Downloads until the last callback, whatever the outcome.
void HttpDownloadSessionTest::download(const QString &path, qint64 approximateSize)
{
    const qsizetype before = m_delegate->endCount();
    m_session->start({m_server->url(path), approximateSize});
    QTRY_COMPARE(m_delegate->endCount(), before + 1);
}

// Leaves a partial download of the resource, which the server then offers in full.
void HttpDownloadSessionTest::interruptedDownload(Resource resource)
{
    resource.dropAfter = firstPart;
    m_server->set(u"/model.gguf"_s, resource);
    download();
    QCOMPARE(QFileInfo(m_folder->filePath(u"Downloads/model.gguf.partial"_s)).size(), firstPart);
    resource.dropAfter = -1;
    m_server->set(u"/model.gguf"_s, resource);
}

QByteArray HttpDownloadSessionTest::requestHeader(qsizetype index, const QByteArray &name) const
{
    return m_server->requests().value(index).headers.value(name);
}

QStringList HttpDownloadSessionTest::leftOver() const
{
    return QDir(m_folder->filePath(u"Downloads"_s)).entryList(QDir::Files | QDir::Hidden);
}

void HttpDownloadSessionTest::wholeFileIsHandedOverOnce()
{
    m_server->set(u"/model.gguf"_s, model());
    download();
    const RecordingDelegate::Record record = m_delegate->record();
    QCOMPARE(record.finished.size(), 1);
    QCOMPARE(record.finished[0].httpStatus, std::optional(200));
    QCOMPARE(record.finished[0].originalUrl, m_server->url(u"/model.gguf"_s));
    QCOMPARE(record.content, someContent());
    QVERIFY(!record.ends[0]);
    QCOMPARE(leftOver(), QStringList());
}

void HttpDownloadSessionTest::callbacksComeOnOneThreadOfTheirOwn()
{
    m_server->set(u"/model.gguf"_s, model());
    download();
    const QList<const QThread *> threads = m_delegate->record().threads;
    QVERIFY(threads.size() >= 3);
    QCOMPARE(QSet<const QThread *>(threads.begin(), threads.end()).size(), 1);
    QVERIFY(threads[0] != QThread::currentThread());
}

void HttpDownloadSessionTest::progressNamesTheAnnouncedLength()
{
    Resource half = model();
    half.holdAfter = modelSize / 2;
    m_server->set(u"/model.gguf"_s, half);
    m_session->start({m_server->url(u"/model.gguf"_s), 0});
    const QPair<qint64, qint64> expected = {modelSize / 2, modelSize};
    QTRY_COMPARE(m_delegate->record().progress.value(m_delegate->record().progress.size() - 1), expected);
    m_server->release();
    QTRY_COMPARE(m_delegate->endCount(), 1);
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::progressWithoutALengthNamesNone()
{
    Resource resource = model();
    resource.length = Resource::Length::Unknown;
    resource.holdAfter = modelSize / 2;
    m_server->set(u"/model.gguf"_s, resource);
    m_session->start({m_server->url(u"/model.gguf"_s), 0});
    const QPair<qint64, qint64> expected = {modelSize / 2, 0};
    QTRY_COMPARE(m_delegate->record().progress.value(m_delegate->record().progress.size() - 1), expected);
    m_server->release();
    QTRY_COMPARE(m_delegate->endCount(), 1);
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::errorStatusHandsOverNoFile_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {400, 401, 403, 404, 407, 410, 416, 429, 500, 503})
        QTest::addRow("%d", status) << status;
}

void HttpDownloadSessionTest::errorStatusHandsOverNoFile()
{
    QFETCH(int, status);
    Resource resource;
    resource.status = status;
    resource.content = "<html>an error page</html>";
    m_server->set(u"/model.gguf"_s, resource);
    download();
    const RecordingDelegate::Record record = m_delegate->record();
    QCOMPARE(record.finished.size(), 1);
    QCOMPARE(record.finished[0].httpStatus, std::optional(status));
    QCOMPARE(record.finished[0].temporaryFile, QString());
    QVERIFY(!record.ends[0]);
    QCOMPARE(leftOver(), QStringList());
}

void HttpDownloadSessionTest::unexpectedStatusFails()
{
    Resource resource;
    resource.status = 304;
    m_server->set(u"/model.gguf"_s, resource);
    download();
    QCOMPARE(m_delegate->record().finished.size(), 0);
    QCOMPARE(m_delegate->lastMessage(), u"The download server gave an unexpected answer (HTTP 304)."_s);
}

void HttpDownloadSessionTest::emptyFileFails()
{
    m_server->set(u"/model.gguf"_s, Resource());
    download();
    QCOMPARE(m_delegate->record().finished.size(), 0);
    QCOMPARE(m_delegate->lastMessage(), u"The download server sent an empty file."_s);
}

void HttpDownloadSessionTest::unreachableServerFailsWithASentence()
{
    const QUrl url = m_server->url(u"/model.gguf"_s);
    m_server.reset();
    m_session->start({url, 0});
    QTRY_COMPARE(m_delegate->endCount(), 1);
    QCOMPARE(m_delegate->lastMessage(), u"The download server refused the connection."_s);
}

void HttpDownloadSessionTest::silentServerFailsWithASentence()
{
    TransferOptions impatient = options();
    impatient.silenceLimit = std::chrono::milliseconds(100);
    newSession(impatient);
    Resource resource = model();
    resource.holdAfter = firstPart;
    m_server->set(u"/model.gguf"_s, resource);
    download();
    QCOMPARE(m_delegate->lastMessage(), u"The download server stopped answering."_s);
}

void HttpDownloadSessionTest::aMirrorIsAskedInsteadOfTheFilesServer()
{
    TransferOptions mirrored = options();
    mirrored.mirror = m_server->url(u"/models"_s);
    newSession(mirrored);
    m_server->set(u"/models/a/model.gguf"_s, model());
    const QUrl file(u"http://models.invalid/a/model.gguf"_s);
    m_session->start({file, 0});
    QTRY_COMPARE(m_delegate->endCount(), 1);
    const RecordingDelegate::Record record = m_delegate->record();
    QCOMPARE(record.content, someContent());
    QCOMPARE(record.finished[0].originalUrl, file);
}

void HttpDownloadSessionTest::aMirrorThatIsNotSecureIsNotAsked_data()
{
    QTest::addColumn<QUrl>("mirror");
    QTest::newRow("unencrypted") << QUrl(u"http://192.0.2.1/models"_s);
    QTest::newRow("no address") << QUrl(u"mirror"_s);
    QTest::newRow("unreadable") << QUrl(u"https://[mirror"_s);
}

void HttpDownloadSessionTest::aMirrorThatIsNotSecureIsNotAsked()
{
    QFETCH(QUrl, mirror);
    TransferOptions mirrored = options();
    mirrored.mirror = mirror;
    newSession(mirrored);
    m_server->set(u"/model.gguf"_s, model());
    download();
    QCOMPARE(m_delegate->lastMessage(),
             u"The mirror for models isn't used: its address must begin with https://, "
             "or be this computer's."_s);
    QCOMPARE(m_server->requests().size(), 0);
}

void HttpDownloadSessionTest::aProxyOfTheEnvironmentIsUsed()
{
    const QString file = u"http://models.invalid/model.gguf"_s;
    m_server->set(file, model());
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"http_proxy"_s, m_server->url(QString()).toString());
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(DOWNLOAD_PROCESS), {file, options().downloadsDirectory});
    QTRY_COMPARE(process.state(), QProcess::NotRunning);
    const QByteArray output = process.readAllStandardOutput();
    QVERIFY2(output.endsWith("finished\nended\n"), output.constData());
    QCOMPARE(m_server->requests().size(), 1);
}

void HttpDownloadSessionTest::cancelEndsWithTheCancellationCode()
{
    Resource resource = model();
    resource.holdAfter = firstPart;
    m_server->set(u"/model.gguf"_s, resource);
    const quint64 task = m_session->start({m_server->url(u"/model.gguf"_s), 0});
    QTRY_VERIFY(!m_delegate->record().progress.isEmpty());
    m_session->cancel(task);
    QTRY_COMPARE(m_delegate->endCount(), 1);
    QCOMPARE(m_delegate->record().ends[0]->code, -999);
    QCOMPARE(m_delegate->record().finished.size(), 0);
}

void HttpDownloadSessionTest::cancelOfAnEndedDownloadDoesNothing()
{
    m_server->set(u"/model.gguf"_s, model());
    const quint64 task = m_session->start({m_server->url(u"/model.gguf"_s), 0});
    QTRY_COMPARE(m_delegate->endCount(), 1);
    m_session->cancel(task);
    download();
    QCOMPARE(m_delegate->endCount(), 2);
    QVERIFY(!m_delegate->record().ends[1]);
}

void HttpDownloadSessionTest::destructionMidwayLeavesThePartWithoutACallback()
{
    Resource resource = model();
    resource.holdAfter = firstPart;
    m_server->set(u"/model.gguf"_s, resource);
    m_session->start({m_server->url(u"/model.gguf"_s), 0});
    QTRY_COMPARE(QFileInfo(m_folder->filePath(u"Downloads/model.gguf.partial"_s)).size(), firstPart);
    m_session.reset();
    QCOMPARE(m_delegate->endCount(), 0);

    newSession(options());
    m_server->set(u"/model.gguf"_s, model());
    download();
    QCOMPARE(requestHeader(1, "range"), "bytes=100000-");
    QCOMPARE(m_delegate->record().content, someContent());
}

// The HTTP library reports some of them as a regular end.
void HttpDownloadSessionTest::everyDroppedConnectionIsReportedAsLost()
{
    AbruptServer server;
    for (int round = 1; round <= 100; ++round) {
        m_session->start({server.url(u"/model%1.gguf"_s.arg(round)), 0});
        QTRY_COMPARE(m_delegate->endCount(), round);
        QCOMPARE(m_delegate->lastMessage(), u"The connection was lost during the download."_s);
    }
}

void HttpDownloadSessionTest::droppedConnectionFailsAndIsResumed()
{
    interruptedDownload(model());
    QCOMPARE(m_delegate->lastMessage(), u"The connection was lost during the download."_s);
    QCOMPARE(m_delegate->record().finished.size(), 0);

    download();
    QCOMPARE(requestHeader(1, "range"), "bytes=100000-");
    QCOMPARE(requestHeader(1, "if-range"), "\"version-1\"");
    QCOMPARE(m_server->requests().size(), 2);
    QCOMPARE(m_delegate->record().content, someContent());
    QCOMPARE(m_delegate->record().progress.last().second, modelSize);
    QVERIFY(m_delegate->record().progress.last().first > firstPart);
    QCOMPARE(leftOver(), QStringList());
}

void HttpDownloadSessionTest::resumesByDateWhenThereIsNoTag()
{
    Resource resource = model();
    resource.entityTag.clear();
    resource.lastModified = "Wed, 21 Oct 2015 07:28:00 GMT";
    interruptedDownload(resource);
    download();
    QCOMPARE(requestHeader(1, "range"), "bytes=100000-");
    QCOMPARE(requestHeader(1, "if-range"), resource.lastModified);
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::withoutATagOrADateItStartsOver()
{
    Resource resource = model();
    resource.entityTag.clear();
    interruptedDownload(resource);
    download();
    QCOMPARE(requestHeader(1, "range"), QByteArray());
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::weakTagStartsOver()
{
    Resource resource = model();
    resource.entityTag = "W/\"version-1\"";
    interruptedDownload(resource);
    download();
    QCOMPARE(requestHeader(1, "range"), QByteArray());
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::changedFileStartsOver()
{
    interruptedDownload(model());
    Resource changed = model();
    changed.content = someContent(2);
    changed.entityTag = "\"version-2\"";
    m_server->set(u"/model.gguf"_s, changed);
    download();
    QCOMPARE(requestHeader(1, "range"), "bytes=100000-");
    QCOMPARE(m_delegate->record().content, changed.content);
}

void HttpDownloadSessionTest::changedFileSentAsAPartStartsOver()
{
    interruptedDownload(model());
    Resource changed = model();
    changed.content = someContent(2);
    changed.entityTag = "\"version-2\"";
    changed.ranges = Resource::Ranges::SentUnasked;
    m_server->set(u"/model.gguf"_s, changed);
    download();
    QCOMPARE(m_server->requests().size(), 3);
    QCOMPARE(requestHeader(2, "range"), QByteArray());
    QCOMPARE(m_delegate->record().content, changed.content);
}

void HttpDownloadSessionTest::wholeAnswerToARangeRequestStartsOver()
{
    Resource resource = model();
    resource.ranges = Resource::Ranges::Ignored;
    interruptedDownload(resource);
    download();
    QCOMPARE(requestHeader(1, "range"), "bytes=100000-");
    QCOMPARE(m_server->requests().size(), 2);
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::refusedRangeStartsOver()
{
    Resource resource = model();
    resource.ranges = Resource::Ranges::Refused;
    interruptedDownload(resource);
    download();
    QCOMPARE(requestHeader(1, "range"), "bytes=100000-");
    QCOMPARE(requestHeader(2, "range"), QByteArray());
    QCOMPARE(m_delegate->record().content, someContent());
    QVERIFY(!m_delegate->record().ends.last());
}

void HttpDownloadSessionTest::anotherAddressOfTheSameNameStartsOver()
{
    interruptedDownload(model());
    m_server->set(u"/elsewhere/model.gguf"_s, model());
    download(u"/elsewhere/model.gguf"_s);
    QCOMPARE(requestHeader(1, "range"), QByteArray());
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::partThatIsWholeAlreadyNeedsItsLastByteOnly()
{
    interruptedDownload(model());
    QFile partial(m_folder->filePath(u"Downloads/model.gguf.partial"_s));
    QVERIFY(partial.open(QIODevice::WriteOnly));
    partial.write(someContent());
    partial.close();
    download();
    QCOMPARE(requestHeader(1, "range"), "bytes=299999-");
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::fileThatIsNotTakenAwayIsKept()
{
    m_server->set(u"/model.gguf"_s, model());
    m_delegate->takesFiles = false;
    download();
    QCOMPARE(m_delegate->record().finished.size(), 1);
    m_delegate->takesFiles = true;
    download();
    QCOMPARE(requestHeader(1, "range"), "bytes=299999-");
    QCOMPARE(m_delegate->record().content, someContent());
    QCOMPARE(leftOver(), QStringList());
}

void HttpDownloadSessionTest::damagedPartIsFoundByTheDigest()
{
    Resource resource = model();
    resource.headers = {{"Repr-Digest", "sha-256=:" + sha256(resource.content).toBase64() + ':'}};
    interruptedDownload(resource);
    QFile partial(m_folder->filePath(u"Downloads/model.gguf.partial"_s));
    QVERIFY(partial.open(QIODevice::ReadWrite));
    partial.write(QByteArray(100, '\0'));
    partial.close();
    download();
    QCOMPARE(m_delegate->record().finished.size(), 0);
    QVERIFY(m_delegate->lastMessage().contains(u"SHA-256"_s));

    download();
    QCOMPARE(requestHeader(2, "range"), QByteArray());
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::shortDownloadIsAFailure()
{
    Resource resource = model();
    resource.announcedLength = modelSize + 1000;
    m_server->set(u"/model.gguf"_s, resource);
    download();
    QCOMPARE(m_delegate->record().finished.size(), 0);
    QVERIFY(m_delegate->record().ends[0].has_value());
}

void HttpDownloadSessionTest::downloadShorterThanTheRedirectSaidIsAFailure()
{
    Resource redirect;
    redirect.status = 302;
    redirect.headers = {{"Location", "/storage"}, {"X-Linked-Size", "300500"}};
    m_server->set(u"/model.gguf"_s, redirect);
    Resource storage = model();
    storage.length = Resource::Length::Unknown;
    m_server->set(u"/storage"_s, storage);
    download();
    QCOMPARE(m_delegate->record().finished.size(), 0);
    QCOMPARE(m_delegate->lastMessage(),
             u"The download has the wrong size: 300000 bytes instead of 300500."_s);
}

void HttpDownloadSessionTest::downloadLongerThanTheRedirectSaidIsAFailure()
{
    Resource redirect;
    redirect.status = 302;
    redirect.headers = {{"Location", "/storage"}, {"X-Linked-Size", "299999"}};
    m_server->set(u"/model.gguf"_s, redirect);
    m_server->set(u"/storage"_s, model());
    download();
    QCOMPARE(m_delegate->record().finished.size(), 0);
    QCOMPARE(m_delegate->lastMessage(),
             u"The download has the wrong size: 300000 bytes instead of 299999."_s);
    QCOMPARE(leftOver(), QStringList());
}

void HttpDownloadSessionTest::bodyLongerThanAnnouncedIsCutOffAtOnce()
{
    Resource redirect;
    redirect.status = 302;
    redirect.headers = {{"Location", "/storage"}, {"X-Linked-Size", "200000"}};
    m_server->set(u"/model.gguf"_s, redirect);
    Resource endless = model();
    endless.length = Resource::Length::Unknown;
    endless.holdAfter = 200'001; // the connection stays open
    m_server->set(u"/storage"_s, endless);
    download();
    QCOMPARE(m_delegate->lastMessage(), u"The download has the wrong size: more than 200000 bytes."_s);
    QCOMPARE(m_delegate->record().finished.size(), 0);
    QCOMPARE(leftOver(), QStringList());
}

void HttpDownloadSessionTest::answerOfAnotherSizeThanKnownIsRefused()
{
    Resource page;
    page.content = "<html>Please log in</html>";
    page.holdAfter = 0; // the header suffices
    m_server->set(u"/model.gguf"_s, page);
    m_session->start({m_server->url(u"/model.gguf"_s), 0, VerifiedFile{modelSize, sha256(someContent())}});
    QTRY_COMPARE(m_delegate->endCount(), 1);
    QCOMPARE(m_delegate->lastMessage(), u"The download has the wrong size: 26 bytes instead of 300000."_s);
    QCOMPARE(leftOver(), QStringList());
}

void HttpDownloadSessionTest::knownDigestIsCheckedWhateverTheServerAnnounces()
{
    Resource forged = model();
    forged.content = someContent(2);
    forged.headers = {{"Repr-Digest", "sha-256=:" + sha256(forged.content).toBase64() + ':'}};
    m_server->set(u"/model.gguf"_s, forged);
    const DownloadRequest request{m_server->url(u"/model.gguf"_s), 0,
                                  VerifiedFile{modelSize, sha256(someContent())}};
    m_session->start(request);
    QTRY_COMPARE(m_delegate->endCount(), 1);
    QCOMPARE(m_delegate->lastMessage(),
             u"The download is damaged: its SHA-256 isn't the one that this model has."_s);
    QCOMPARE(leftOver(), QStringList());

    m_server->set(u"/model.gguf"_s, model());
    m_session->start(request);
    QTRY_COMPARE(m_delegate->endCount(), 2);
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::announcedDigestIsChecked()
{
    Resource resource = model();
    resource.headers = {{"Digest", "sha-256=" + sha256(resource.content).toBase64()}};
    m_server->set(u"/model.gguf"_s, resource);
    download();
    QCOMPARE(m_delegate->record().content, someContent());
    QVERIFY(!m_delegate->record().ends[0]);
}

void HttpDownloadSessionTest::wrongDigestIsAFailureAndKeepsNothing()
{
    Resource resource = model();
    resource.headers = {{"Digest", "sha-256=" + sha256("another file").toBase64()}};
    m_server->set(u"/model.gguf"_s, resource);
    download();
    QCOMPARE(m_delegate->record().finished.size(), 0);
    QCOMPARE(m_delegate->lastMessage(),
             u"The download is damaged: its SHA-256 isn't the one that the server announced."_s);
    QCOMPARE(leftOver(), QStringList());
}

void HttpDownloadSessionTest::digestOfTheRedirectIsChecked()
{
    Resource redirect;
    redirect.status = 302;
    redirect.headers = {{"Location", "/storage"},
                        {"X-Linked-Etag", '"' + sha256(someContent()).toHex() + '"'}};
    m_server->set(u"/model.gguf"_s, redirect);
    m_server->set(u"/storage"_s, model());
    download();
    QCOMPARE(m_delegate->record().content, someContent());
    QCOMPARE(m_delegate->record().finished[0].originalUrl, m_server->url(u"/model.gguf"_s));

    Resource forged = model();
    forged.content = someContent(2);
    m_server->set(u"/storage"_s, forged);
    download();
    QVERIFY(m_delegate->lastMessage().contains(u"SHA-256"_s));
    QCOMPARE(m_delegate->record().finished.size(), 1);
}

void HttpDownloadSessionTest::endlessRedirectsFail()
{
    Resource redirect;
    redirect.status = 302;
    redirect.headers = {{"Location", "/model.gguf"}};
    m_server->set(u"/model.gguf"_s, redirect);
    download();
    QCOMPARE(m_delegate->lastMessage(), u"The download server redirected too often."_s);
}

void HttpDownloadSessionTest::redirectElsewhereFails_data()
{
    QTest::addColumn<QByteArray>("location");
    QTest::newRow("a file of this computer") << QByteArray("file:///etc/hostname");
    QTest::newRow("unencrypted, another computer") << QByteArray("http://192.0.2.1/model.gguf");
}

void HttpDownloadSessionTest::redirectElsewhereFails()
{
    QFETCH(QByteArray, location);
    Resource redirect;
    redirect.status = 302;
    redirect.headers = {{"Location", location}};
    m_server->set(u"/model.gguf"_s, redirect);
    download();
    QCOMPARE(m_delegate->lastMessage(), u"The download server redirected to an address that isn't secure."_s);
    QCOMPARE(m_delegate->record().finished.size(), 0);
}

void HttpDownloadSessionTest::tooSmallADiskIsRefusedBeforeAnyRequest()
{
    TransferOptions small = options();
    small.freeSpace = [](const QString &) { return qint64(300'000'000); };
    newSession(small);
    m_server->set(u"/model.gguf"_s, model());
    download(u"/model.gguf"_s, 986'000'000);
    QCOMPARE(m_delegate->lastMessage(),
             u"Not enough disk space: the download needs 986.0 MB, but only 300.0 MB are free."_s);
    QCOMPARE(m_server->requests().size(), 0);
    QCOMPARE(leftOver(), QStringList());
}

void HttpDownloadSessionTest::announcedLengthBeyondTheFreeSpaceIsRefused()
{
    TransferOptions small = options();
    small.freeSpace = [](const QString &) { return qint64(250'000); };
    newSession(small);
    m_server->set(u"/model.gguf"_s, model());
    download();
    QCOMPARE(m_delegate->lastMessage(),
             u"Not enough disk space: the download needs 300.0 kB, but only 250.0 kB are free."_s);
    QCOMPARE(m_delegate->record().progress.size(), 0);
    QCOMPARE(m_delegate->record().finished.size(), 0);
}

void HttpDownloadSessionTest::partAlreadyThereCountsForTheFreeSpace()
{
    interruptedDownload(model());
    TransferOptions small = options();
    small.freeSpace = [](const QString &) { return modelSize - firstPart; };
    newSession(small);
    download(u"/model.gguf"_s, modelSize);
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::failedWriteIsReported()
{
    // A file size limit simulates a disk that fills up.
    rlimit unlimited;
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    rlimit limited = unlimited;
    limited.rlim_cur = firstPart;
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &limited), 0);
    m_server->set(u"/model.gguf"_s, model());
    download();
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, previous);
    QCOMPARE(m_delegate->lastMessage(), u"Couldn't write the download to disk: File too large."_s);
    QCOMPARE(m_delegate->record().finished.size(), 0);
}

void HttpDownloadSessionTest::unwritableDownloadsFolderIsReported()
{
    QFile file(m_folder->filePath(u"Downloads"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    download();
    QCOMPARE(m_delegate->lastMessage(), u"Couldn't write to the downloads folder."_s);
    QCOMPARE(m_server->requests().size(), 0);
}

void HttpDownloadSessionTest::secondSessionDoesNotWriteTheSameFile()
{
    Resource resource = model();
    resource.holdAfter = firstPart;
    m_server->set(u"/model.gguf"_s, resource);
    m_session->start({m_server->url(u"/model.gguf"_s), 0});
    QTRY_VERIFY(!m_delegate->record().progress.isEmpty());

    RecordingDelegate secondDelegate;
    HttpDownloadSession second(options());
    second.setDelegate(&secondDelegate);
    second.start({m_server->url(u"/model.gguf"_s), 0});
    QTRY_COMPARE(secondDelegate.endCount(), 1);
    QCOMPARE(secondDelegate.lastMessage(),
             u"Another running copy of the application is already downloading this model."_s);

    m_server->release();
    QTRY_COMPARE(m_delegate->endCount(), 1);
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::secondProcessDoesNotWriteTheSameFile()
{
    Resource resource = model();
    resource.holdAfter = firstPart;
    m_server->set(u"/model.gguf"_s, resource);
    m_session->start({m_server->url(u"/model.gguf"_s), 0});
    QTRY_VERIFY(!m_delegate->record().progress.isEmpty());

    QProcess second;
    second.start(QStringLiteral(DOWNLOAD_PROCESS),
                 {m_server->url(u"/model.gguf"_s).toString(), options().downloadsDirectory});
    QTRY_COMPARE(second.state(), QProcess::NotRunning);
    QCOMPARE(second.readAllStandardOutput().trimmed(),
             "Another running copy of the application is already downloading this model.");

    m_server->release();
    QTRY_COMPARE(m_delegate->endCount(), 1);
    QCOMPARE(m_delegate->record().content, someContent());
}

void HttpDownloadSessionTest::killedProcessLeavesAPartThatIsResumed()
{
    Resource resource = model();
    resource.holdAfter = firstPart;
    m_server->set(u"/model.gguf"_s, resource);
    QProcess killed;
    killed.start(QStringLiteral(DOWNLOAD_PROCESS),
                 {m_server->url(u"/model.gguf"_s).toString(), options().downloadsDirectory});
    QTRY_COMPARE(QFileInfo(m_folder->filePath(u"Downloads/model.gguf.partial"_s)).size(), firstPart);
    killed.kill();
    QTRY_COMPARE(killed.state(), QProcess::NotRunning);
    QCOMPARE(killed.exitStatus(), QProcess::CrashExit);

    m_server->set(u"/model.gguf"_s, model());
    download();
    QCOMPARE(requestHeader(1, "range"), "bytes=100000-");
    QCOMPARE(m_delegate->record().content, someContent());
}

QTEST_GUILESS_MAIN(HttpDownloadSessionTest)
#include "HttpDownloadSessionTest.moc"
