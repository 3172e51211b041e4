// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/HttpDownloadSession.h"
#include "Models/Download/LocalHttpServer.h"
#include "Models/ModelManager.h"
#include "Support/ModelBytes.h"
#include "Support/ScriptedEngine.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>

using namespace Qt::StringLiterals;

using Resource = LocalHttpServer::Resource;
using State = ModelManager::State;

namespace {

constexpr qint64 modelSize = 400'000;

Resource resource(char fill)
{
    Resource result;
    result.content = ModelBytes::plausible(modelSize, fill);
    result.entityTag = QByteArray("\"") + fill + '"';
    return result;
}

} // namespace

// The model manager with the real download session and a real server, from the click to the loaded model.
class ModelDownloadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void progressWithALength();
    void progressWithoutALength();
    void finishedDownloadIsLoaded();
    void missingFileFailsAndKeepsAnEarlierOne();
    void droppedConnectionFailsAndTheNextTryContinues();
    void fileAppearsUnderItsNameOnlyWhenWhole();
    void cancelGoesBackToNeedsDownload();
    void cancelledDownloadContinuesWhereItWas();
    void switchOfTheModelMidwayIsSilent();
    void downloadAfterASwitchBringsTheOtherModel();
    void lateProgressReportDoesNotBringBackDownloading();
    void failedMoveIsShownAndLosesNothing();
    void fullDiskIsRefusedBeforeTheDownloadStarts();
    void damagedDownloadPublishesNothing();
    void downloadThatIsNoModelPublishesNothingAndTheNextTryBeginsAnew();
    void modelsFolderOnAnotherFileSystemIsServed();
    void quittingMidwayKeepsThePartForTheNextStart();

private:
    void newManager();
    LocalModel model(const QString &name) const;
    QString path(const QString &name) const { return m_manager->directory() + u'/' + name; }
    // The lock file is removed just before the last callback.
    bool sessionHasEnded() const
    {
        return !QFile::exists(m_folder->filePath(u"Orvane/Downloads/first.gguf.lock"_s));
    }
    void downloadHeldAt(qint64 bytes, const QString &name = u"first.gguf"_s);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<LocalHttpServer> m_server;
    std::unique_ptr<ModelManager> m_manager;
    ScriptedEngine *m_engine = nullptr;
    std::function<qint64(const QString &)> m_freeSpace;
};

void ModelDownloadTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_freeSpace = &HttpDownloadSession::freeSpace;
    m_server = std::make_unique<LocalHttpServer>();
    m_server->set(u"/first.gguf"_s, resource('1'));
    m_server->set(u"/second.gguf"_s, resource('2'));
    newManager();
    m_manager->select(model(u"first.gguf"_s));
}

void ModelDownloadTest::cleanup()
{
    m_manager.reset();
    m_server.reset();
    m_folder.reset();
}

void ModelDownloadTest::newManager()
{
    m_manager.reset();
    const ModelStorage storage = {m_folder->path(), m_folder->filePath(u"settings.conf"_s)};
    TransferOptions options;
    options.downloadsDirectory = storage.downloadsDirectory();
    options.freeSpace = m_freeSpace;
    auto engine = std::make_unique<ScriptedEngine>();
    m_engine = engine.get();
    auto session = std::make_unique<HttpDownloadSession>(options);
    m_manager = std::make_unique<ModelManager>(std::move(engine), std::move(session), storage);
}

LocalModel ModelDownloadTest::model(const QString &name) const
{
    return {name, name, u"A model of the tests"_s, m_server->url(u'/' + name), name, 0};
}

// Starts the download and waits until `bytes` have arrived and the server holds the rest.
void ModelDownloadTest::downloadHeldAt(qint64 bytes, const QString &name)
{
    Resource held = resource('1');
    held.holdAfter = bytes;
    m_server->set(u'/' + name, held);
    m_manager->download();
    const double share = static_cast<double>(bytes) / static_cast<double>(modelSize);
    QTRY_COMPARE(m_manager->state(), State::downloading(share));
}

void ModelDownloadTest::progressWithALength()
{
    downloadHeldAt(modelSize / 4);
    m_server->release();
    QTRY_COMPARE(m_manager->state(), State::loaded());
}

void ModelDownloadTest::progressWithoutALength()
{
    Resource unknown = resource('1');
    unknown.length = Resource::Length::Unknown;
    unknown.holdAfter = 200'000;
    m_server->set(u"/first.gguf"_s, unknown);
    m_manager->download();
    QTRY_COMPARE(m_manager->state(), State::downloading(0.0002));
    m_server->release();
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(QFileInfo(path(u"first.gguf"_s)).size(), modelSize);
}

void ModelDownloadTest::finishedDownloadIsLoaded()
{
    m_manager->download();
    QCOMPARE(m_manager->state(), State::downloading(0.0));
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(m_engine->loadedPaths, {path(u"first.gguf"_s)});
    QFile file(path(u"first.gguf"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), resource('1').content);
}

void ModelDownloadTest::missingFileFailsAndKeepsAnEarlierOne()
{
    QFile earlier(path(u"missing.gguf"_s));
    QVERIFY(earlier.open(QIODevice::WriteOnly));
    earlier.write("earlier");
    earlier.close();
    m_manager->select(model(u"missing.gguf"_s));
    QTRY_COMPARE(m_manager->state(), State::loaded());
    m_manager->download();
    QTRY_COMPARE(m_manager->state(), State::failed(u"Download failed (HTTP 404)."_s));
    QVERIFY(earlier.open(QIODevice::ReadOnly));
    QCOMPARE(earlier.readAll(), "earlier");
}

void ModelDownloadTest::droppedConnectionFailsAndTheNextTryContinues()
{
    Resource dropped = resource('1');
    dropped.dropAfter = 150'000;
    m_server->set(u"/first.gguf"_s, dropped);
    m_manager->download();
    QTRY_COMPARE(m_manager->state(), State::failed(u"The connection was lost during the download."_s));
    QCOMPARE(QDir(m_manager->directory()).entryList(QDir::Files | QDir::Hidden), QStringList());

    m_server->set(u"/first.gguf"_s, resource('1'));
    m_manager->refresh();
    m_manager->download();
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(m_server->requests().last().headers.value("range"), "bytes=150000-");
    QCOMPARE(QFileInfo(path(u"first.gguf"_s)).size(), modelSize);
}

void ModelDownloadTest::fileAppearsUnderItsNameOnlyWhenWhole()
{
    downloadHeldAt(modelSize - 1000);
    QCOMPARE(QDir(m_manager->directory()).entryList(QDir::Files | QDir::Hidden), QStringList());
    m_server->release();
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(QDir(m_manager->directory()).entryList(QDir::Files | QDir::Hidden), {u"first.gguf"_s});
    QCOMPARE(QDir(m_folder->filePath(u"Orvane/Downloads"_s)).entryList(QDir::Files), QStringList());
}

void ModelDownloadTest::cancelGoesBackToNeedsDownload()
{
    downloadHeldAt(modelSize / 2);
    m_manager->cancelDownload();
    QCOMPARE(m_manager->state(), State::needsDownload());
    m_server->release();
    m_manager->select(model(u"second.gguf"_s));
    m_manager->download();
    // By now all callbacks of the cancelled download have been handled.
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QVERIFY(!QFile::exists(path(u"first.gguf"_s)));
}

void ModelDownloadTest::cancelledDownloadContinuesWhereItWas()
{
    downloadHeldAt(modelSize / 2);
    m_manager->cancelDownload();
    m_server->set(u"/first.gguf"_s, resource('1'));
    m_manager->download();
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(m_server->requests().last().headers.value("range"), "bytes=200000-");
}

void ModelDownloadTest::switchOfTheModelMidwayIsSilent()
{
    QList<State::Kind> states;
    downloadHeldAt(modelSize / 2);
    connect(m_manager.get(), &ModelManager::stateChanged, m_manager.get(),
            [&] { states.append(m_manager->state().kind); });
    m_manager->select(model(u"second.gguf"_s));
    QCOMPARE(m_manager->state(), State::needsDownload());
    m_server->release();

    QTRY_VERIFY(sessionHasEnded());
    QCoreApplication::processEvents();
    QCOMPARE(states, {State::Kind::NeedsDownload});
    QVERIFY(!QFile::exists(path(u"first.gguf"_s)));
}

void ModelDownloadTest::downloadAfterASwitchBringsTheOtherModel()
{
    downloadHeldAt(modelSize / 2);
    m_manager->select(model(u"second.gguf"_s));
    m_manager->download();
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(m_engine->loadedPaths, {path(u"second.gguf"_s)});
    QFile file(path(u"second.gguf"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), resource('2').content);
}

void ModelDownloadTest::lateProgressReportDoesNotBringBackDownloading()
{
    downloadHeldAt(modelSize / 4);
    // More arrives while the main thread is busy, so its report is still queued when the user cancels.
    m_server->release(modelSize / 4);
    const QFileInfo partial(m_folder->filePath(u"Orvane/Downloads/first.gguf.partial"_s));
    const QDeadlineTimer deadline(5000);
    while (QFile(partial.filePath()).size() < modelSize / 2 && !deadline.hasExpired())
        QThread::yieldCurrentThread();
    QCOMPARE(partial.size(), modelSize / 2);
    m_manager->cancelDownload();
    QCOMPARE(m_manager->state(), State::needsDownload());
    QList<State::Kind> states;
    connect(m_manager.get(), &ModelManager::stateChanged, m_manager.get(),
            [&] { states.append(m_manager->state().kind); });
    QTRY_VERIFY(sessionHasEnded());
    QCoreApplication::processEvents();
    QCOMPARE(states, QList<State::Kind>());
    QCOMPARE(m_manager->state(), State::needsDownload());
}

void ModelDownloadTest::failedMoveIsShownAndLosesNothing()
{
    downloadHeldAt(modelSize / 2);
    QVERIFY(QDir(m_manager->directory()).removeRecursively());
    QFile inTheWay(m_folder->filePath(u"Orvane/Models"_s));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    m_server->release();
    const QString message = u"Couldn't move the download into the models folder: Not a directory."_s;
    QTRY_COMPARE(m_manager->state(), State::failed(message));

    // The download is kept until the folder is usable again.
    QVERIFY(inTheWay.remove());
    m_server->set(u"/first.gguf"_s, resource('1'));
    m_manager->refresh();
    m_manager->download();
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(m_server->requests().last().headers.value("range"), "bytes=399999-");
    QFile file(path(u"first.gguf"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), resource('1').content);
}

void ModelDownloadTest::fullDiskIsRefusedBeforeTheDownloadStarts()
{
    m_freeSpace = [](const QString &) { return qint64(700'000'000); };
    newManager();
    LocalModel large = model(u"first.gguf"_s);
    large.sizeMB = 2019;
    m_manager->select(large);
    m_manager->download();
    const QString message =
        u"Not enough disk space: the download needs 2.0 GB, but only 700.0 MB are free."_s;
    QTRY_COMPARE(m_manager->state(), State::failed(message));
    QVERIFY(m_server->requests().isEmpty());
}

void ModelDownloadTest::damagedDownloadPublishesNothing()
{
    Resource damaged = resource('1');
    damaged.headers = {{"X-Linked-Etag", QByteArray(64, 'a')}};
    m_server->set(u"/first.gguf"_s, damaged);
    m_manager->download();
    QTRY_COMPARE(m_manager->state().kind, State::Kind::Failed);
    QVERIFY(m_manager->state().message.contains(u"SHA-256"_s));
    QVERIFY(!QFile::exists(path(u"first.gguf"_s)));
}

void ModelDownloadTest::downloadThatIsNoModelPublishesNothingAndTheNextTryBeginsAnew()
{
    Resource page;
    page.content = "<html>Please log in to this network</html>";
    page.entityTag = "\"page\"";
    m_server->set(u"/first.gguf"_s, page);
    m_manager->download();
    const QString message = u"The download is no usable model. The file is no GGUF file."_s;
    QTRY_COMPARE(m_manager->state(), State::failed(message));
    QCOMPARE(QDir(m_manager->directory()).entryList(QDir::Files | QDir::Hidden), QStringList());

    m_server->set(u"/first.gguf"_s, resource('1'));
    m_manager->refresh();
    QCOMPARE(m_manager->state(), State::needsDownload());
    m_manager->download();
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(m_server->requests().last().headers.value("range"), QByteArray());
}

void ModelDownloadTest::modelsFolderOnAnotherFileSystemIsServed()
{
    const QTemporaryDir elsewhere(u"/dev/shm/orvane-models"_s);
    if (!elsewhere.isValid())
        QSKIP("There is no second file system to write to.");
    QVERIFY(QDir(m_manager->directory()).removeRecursively());
    QVERIFY(QFile::link(elsewhere.path(), m_folder->filePath(u"Orvane/Models"_s)));
    m_manager->download();
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(QDir(elsewhere.path()).entryList(QDir::Files | QDir::Hidden), {u"first.gguf"_s});
    QCOMPARE(QFileInfo(elsewhere.filePath(u"first.gguf"_s)).size(), modelSize);
}

void ModelDownloadTest::quittingMidwayKeepsThePartForTheNextStart()
{
    downloadHeldAt(modelSize / 2);
    newManager();
    // The choice is not in the catalog, so it is not restored.
    m_manager->select(model(u"first.gguf"_s));
    QCOMPARE(m_manager->state(), State::needsDownload());
    m_server->set(u"/first.gguf"_s, resource('1'));
    m_manager->download();
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(m_server->requests().last().headers.value("range"), "bytes=200000-");
}

QTEST_GUILESS_MAIN(ModelDownloadTest)
#include "ModelDownloadTest.moc"
