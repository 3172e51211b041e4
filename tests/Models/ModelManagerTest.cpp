// SPDX-License-Identifier: Apache-2.0
#include "Models/ModelManager.h"

#include "Support/Gate.h"
#include "Support/ModelBytes.h"
#include "Support/ScriptedDownloadSession.h"
#include "Support/ScriptedEngine.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;

using State = ModelManager::State;

namespace {

const QByteArray earlier = ModelBytes::plausible(1000, 'e');
const QByteArray downloaded = ModelBytes::plausible(1000, 'd');

// Processes all events queued for the main thread.
void turnTheLoop()
{
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    }
}

const LocalModel &firstModel()
{
    return LocalModel::catalog()[0];
}

const LocalModel &secondModel()
{
    return LocalModel::catalog()[1];
}

} // namespace

// The manager's rules, with a scripted session and engine.
class ModelManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void persistedChoiceIsSelectedAtStart_data();
    void persistedChoiceIsSelectedAtStart();
    void initialStateShowsWhetherTheFileExists();
    void directoryIsMadeAtEachRead();
    void folderThatCannotBeMadeShowsAsAMissingFile();
    void standardStorageFollowsTheDesktopsFolders();
    void aFolderOfTheUsersChoiceHoldsModelsAndSettings();

    void refreshOverwritesEveryState_data();
    void refreshOverwritesEveryState();

    void selectingTheSelectedModelDoesNothing();
    void selectingAnotherModelUnloadsRemembersAndLooksForItsFile();
    void selectingAModelWhoseFileIsThereLoadsIt();
    void selectingCancelsTheDownloadSilently();
    void lateProgressAfterASwitchIsDropped();
    void lateProgressOfAnEarlierDownloadIsDropped();
    void loadThatEndsAfterASwitchChangesNothing();
    void engineThatUnloadsLateIsLoadedAnew();
    void releasedModelIsLoadedAgain_data();
    void releasedModelIsLoadedAgain();
    void releaseWithoutALoadedModelDoesNothing();

    void downloadStartsAtZeroWithTheSelectedModel();
    void downloadWhileOneIsInFlightDoesNothing();
    void progressIsTheWrittenShare_data();
    void progressIsTheWrittenShare();
    void finishedFileIsMovedIntoPlaceAndLoaded();
    void finishedFileReplacesAnEarlierOne();
    void errorStatusFailsAndLeavesAnEarlierFile();
    void statusBelowFourHundredCountsAsSuccess_data();
    void statusBelowFourHundredCountsAsSuccess();
    void failedMoveIsReported();
    void downloadThatIsNoModelIsNotPublished_data();
    void downloadThatIsNoModelIsNotPublished();
    void downloadWithoutAUsableNameIsStoredAsModel_data();
    void downloadWithoutAUsableNameIsStoredAsModel();
    void transportErrorFails();
    void cancellationCodeIsSilent();
    void endWithoutAnErrorDoesNothing();
    void downloadCanBeStartedAfterAFailure();
    void cancelButtonGoesBackToWhatTheFolderHolds();
    void cancelButtonWithoutADownloadOnlyRefreshes();
    void fileThatFinishesJustBeforeTheCancelIsUsed();
    void lateErrorOfACancelledDownloadIsDropped();

    void loadPutsTheSelectedFileIntoTheEngine();
    void loadedEngineMakesTheStateLoaded();
    void loadChangesNothingWhenThereIsNothingToLoad_data();
    void loadChangesNothingWhenThereIsNothingToLoad();
    void secondLoadWhileOneRunsOnlyWaitsForIt();
    void waitForALoadEndsWithTheManager();
    void waitForALoadGoesOnWhenTheModelIsSwitched();
    void loadedStateWithAnEmptyEngineLoadsAgain();
    void failedLoadShowsTheEnginesMessage();
    void tooLittleMemoryNamesASmallerModel();
    void fileThatIsNoModelCountsAsMissingOnceItsLoadHasFailed();
    void fileThatTheEngineRefusesTwiceCountsAsMissing();
    void contextThatFailsTwiceIsNotTheFilesFault();
    void fileThatWasReplacedIsLoadedAfterAFailure();
    void loadThatOutlivesTheManagerIsHarmless();

    void everyChangeIsAnnouncedBeforeItHappens();
    void settingTheSameStateAnnouncesNothing();

private:
    void newManager();
    void putFile(const LocalModel &model, const QByteArray &content = earlier);
    QByteArray fileContent(const QString &name) const;
    QString temporaryFile(const QByteArray &content = downloaded) const;
    void finish(const QString &file, int status = 200);
    QString chosen() const;
    void bringInto(State::Kind kind);
    // Makes two attempts to load a plausible file fail.
    void failTwice(InferenceError::Code code);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<ModelManager> m_manager;
    ScriptedEngine *m_engine = nullptr;
    ScriptedDownloadSession *m_session = nullptr;
};

void ModelManagerTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    newManager();
}

void ModelManagerTest::cleanup()
{
    m_manager.reset();
    m_folder.reset();
}

void ModelManagerTest::newManager()
{
    m_manager.reset();
    auto engine = std::make_unique<ScriptedEngine>();
    auto session = std::make_unique<ScriptedDownloadSession>();
    m_engine = engine.get();
    m_session = session.get();
    const ModelStorage storage = {m_folder->path(), m_folder->filePath(u"settings.conf"_s)};
    m_manager = std::make_unique<ModelManager>(std::move(engine), std::move(session), storage);
}

void ModelManagerTest::putFile(const LocalModel &model, const QByteArray &content)
{
    QFile file(m_manager->directory() + u'/' + model.fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray ModelManagerTest::fileContent(const QString &name) const
{
    QFile file(m_manager->directory() + u'/' + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString ModelManagerTest::temporaryFile(const QByteArray &content) const
{
    QFile file(m_folder->filePath(u"temporary"_s));
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write(content);
    return file.fileName();
}

// Ends the latest download as a session would.
void ModelManagerTest::finish(const QString &file, int status)
{
    const auto task = static_cast<quint64>(m_session->started.size());
    const QUrl url = m_session->started.last().url;
    ScriptedDownloadSession::onSessionThread([&] {
        m_session->delegate->downloadFinished({task, status, file, url});
        m_session->delegate->downloadEnded(task, std::nullopt);
    });
}

QString ModelManagerTest::chosen() const
{
    return QSettings(m_folder->filePath(u"settings.conf"_s), QSettings::IniFormat)
        .value(u"selectedModel"_s)
        .toString();
}

// Brings the manager into a state through its public operations.
void ModelManagerTest::bringInto(State::Kind kind)
{
    if (kind == State::Kind::Downloading || kind == State::Kind::Failed)
        m_manager->download();
    if (kind == State::Kind::Failed) {
        finish({}, 500);
        turnTheLoop();
    }
    if (kind == State::Kind::Ready || kind == State::Kind::Loaded) {
        putFile(m_manager->selected());
        m_manager->refresh();
    }
    if (kind == State::Kind::Loaded) {
        m_manager->loadIfNeeded();
        turnTheLoop();
    }
    QCOMPARE(m_manager->state().kind, kind);
}

void ModelManagerTest::persistedChoiceIsSelectedAtStart_data()
{
    QTest::addColumn<QVariant>("persisted");
    QTest::addColumn<int>("index");
    QTest::newRow("nothing") << QVariant() << 0;
    QTest::newRow("the second") << QVariant(u"llama3.2-3b"_s) << 1;
    QTest::newRow("the first") << QVariant(u"qwen2.5-1.5b"_s) << 0;
    QTest::newRow("unknown") << QVariant(u"another"_s) << 0;
}

void ModelManagerTest::persistedChoiceIsSelectedAtStart()
{
    QFETCH(QVariant, persisted);
    QFETCH(int, index);
    if (persisted.isValid()) {
        QSettings settings(m_folder->filePath(u"settings.conf"_s), QSettings::IniFormat);
        settings.setValue(u"selectedModel"_s, persisted);
    }
    newManager();
    QCOMPARE(m_manager->selected(), LocalModel::catalog()[index]);
    QCOMPARE(chosen(), persisted.toString());
}

void ModelManagerTest::initialStateShowsWhetherTheFileExists()
{
    QCOMPARE(m_manager->state(), State::needsDownload());
    putFile(firstModel());
    newManager();
    QCOMPARE(m_manager->state(), State::ready());
    QVERIFY(m_engine->loadedPaths.isEmpty());
}

void ModelManagerTest::directoryIsMadeAtEachRead()
{
    const QString expected = m_folder->filePath(u"Orvane/Models"_s);
    QCOMPARE(m_manager->directory(), expected);
    QVERIFY(QDir(expected).exists());
    QVERIFY(QDir(expected).removeRecursively());
    QCOMPARE(m_manager->directory(), expected);
    QVERIFY(QDir(expected).exists());
}

void ModelManagerTest::folderThatCannotBeMadeShowsAsAMissingFile()
{
    QVERIFY(QDir(m_folder->filePath(u"Orvane"_s)).removeRecursively());
    QFile inTheWay(m_folder->filePath(u"Orvane"_s));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    newManager();
    QCOMPARE(m_manager->state(), State::needsDownload());
}

void ModelManagerTest::aFolderOfTheUsersChoiceHoldsModelsAndSettings()
{
    const QTemporaryDir folder;
    qputenv("ORVANE_HOME", folder.path().toUtf8());
    const ModelStorage storage = ModelStorage::standard();
    qunsetenv("ORVANE_HOME");
    QCOMPARE(storage.modelsDirectory(), folder.filePath(u"Orvane/Models"_s));
    QCOMPARE(storage.settingsFile, folder.filePath(u"Orvane/Orvane.conf"_s));
}

void ModelManagerTest::standardStorageFollowsTheDesktopsFolders()
{
    if (QSysInfo::kernelType() != u"linux")
        QSKIP("The folders are not chosen by variables here.");
    const QByteArray dataHome = qgetenv("XDG_DATA_HOME");
    const QByteArray configHome = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_folder->filePath(u"data"_s)));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder->filePath(u"config"_s)));
    const ModelStorage storage = ModelStorage::standard();
    dataHome.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", dataHome);
    configHome.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", configHome);

    QCOMPARE(storage.modelsDirectory(), m_folder->filePath(u"data/Orvane/Models"_s));
    QCOMPARE(storage.downloadsDirectory(), m_folder->filePath(u"data/Orvane/Downloads"_s));
    QCOMPARE(storage.settingsFile, m_folder->filePath(u"config/Orvane/Orvane.conf"_s));
}

void ModelManagerTest::refreshOverwritesEveryState_data()
{
    QTest::addColumn<State::Kind>("kind");
    QTest::newRow("downloading") << State::Kind::Downloading;
    QTest::newRow("failed") << State::Kind::Failed;
    QTest::newRow("ready") << State::Kind::Ready;
    QTest::newRow("loaded") << State::Kind::Loaded;
}

void ModelManagerTest::refreshOverwritesEveryState()
{
    QFETCH(State::Kind, kind);
    bringInto(kind);
    QFile::remove(m_manager->directory() + u'/' + firstModel().fileName);
    m_manager->refresh();
    QCOMPARE(m_manager->state(), State::needsDownload());
    putFile(firstModel());
    m_manager->refresh();
    QCOMPARE(m_manager->state(), State::ready());
}

void ModelManagerTest::selectingTheSelectedModelDoesNothing()
{
    bringInto(State::Kind::Loaded);
    QSignalSpy changes(m_manager.get(), &ModelManager::willChange);
    m_manager->select(firstModel());
    turnTheLoop();
    QCOMPARE(m_engine->unloadCount, 0);
    QCOMPARE(chosen(), QString());
    QCOMPARE(changes.count(), 0);
    QCOMPARE(m_manager->state(), State::loaded());
}

void ModelManagerTest::selectingAnotherModelUnloadsRemembersAndLooksForItsFile()
{
    bringInto(State::Kind::Loaded);
    m_manager->select(secondModel());
    QCOMPARE(m_engine->unloadCount, 1);
    QCOMPARE(m_manager->selected(), secondModel());
    QCOMPARE(chosen(), u"llama3.2-3b"_s);
    QCOMPARE(m_manager->state(), State::needsDownload());
    turnTheLoop();
    QCOMPARE(m_manager->state(), State::needsDownload());
    QCOMPARE(m_engine->loadedPaths.size(), 1);
    QVERIFY(m_session->started.isEmpty());
}

void ModelManagerTest::selectingAModelWhoseFileIsThereLoadsIt()
{
    putFile(secondModel());
    m_manager->select(secondModel());
    QCOMPARE(m_manager->state(), State::ready());
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(m_engine->loadedPaths, {m_manager->directory() + u'/' + secondModel().fileName});
}

void ModelManagerTest::selectingCancelsTheDownloadSilently()
{
    bringInto(State::Kind::Downloading);
    m_manager->select(secondModel());
    QCOMPARE(m_session->cancelled, {quint64(1)});
    QCOMPARE(m_manager->state(), State::needsDownload());
    const DownloadError cancelled = {DownloadError::cancelled, u"cancelled"_s};
    ScriptedDownloadSession::onSessionThread([&] { m_session->delegate->downloadEnded(1, cancelled); });
    turnTheLoop();
    QCOMPARE(m_manager->state(), State::needsDownload());
}

void ModelManagerTest::lateProgressAfterASwitchIsDropped()
{
    bringInto(State::Kind::Downloading);
    ScriptedDownloadSession::onSessionThread([&] { m_session->delegate->downloadProgressed(1, 10, 100); });
    m_manager->select(secondModel());
    turnTheLoop();
    QCOMPARE(m_manager->state(), State::needsDownload());
    ScriptedDownloadSession::onSessionThread([&] { m_session->delegate->downloadProgressed(1, 20, 100); });
    turnTheLoop();
    QCOMPARE(m_manager->state(), State::needsDownload());
}

void ModelManagerTest::lateProgressOfAnEarlierDownloadIsDropped()
{
    bringInto(State::Kind::Downloading);
    m_manager->select(secondModel());
    m_manager->download();
    ScriptedDownloadSession::onSessionThread([&] { m_session->delegate->downloadProgressed(1, 90, 100); });
    turnTheLoop();
    QCOMPARE(m_manager->state(), State::downloading(0.0));
}

void ModelManagerTest::loadThatEndsAfterASwitchChangesNothing()
{
    bringInto(State::Kind::Ready);
    Gate gate;
    m_engine->beforeLoaded = [&gate] { return gate.passed(); };
    m_manager->loadIfNeeded();
    QCOMPARE(m_manager->state(), State::loading());
    m_manager->select(secondModel());
    QCOMPARE(m_manager->state(), State::needsDownload());
    gate.open();
    QTRY_VERIFY(m_engine->isLoaded());
    turnTheLoop();
    QCOMPARE(m_manager->state(), State::needsDownload());
}

void ModelManagerTest::engineThatUnloadsLateIsLoadedAnew()
{
    bringInto(State::Kind::Loaded);
    putFile(secondModel());
    m_engine->unloadsAtOnce = false;
    m_manager->select(secondModel());
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(m_engine->loadedPaths.value(1), m_manager->directory() + u'/' + secondModel().fileName);
}

void ModelManagerTest::releasedModelIsLoadedAgain_data()
{
    QTest::addColumn<bool>("unloadsAtOnce");
    QTest::newRow("unloads at once") << true;
    QTest::newRow("unloads late") << false;
}

void ModelManagerTest::releasedModelIsLoadedAgain()
{
    QFETCH(bool, unloadsAtOnce);
    bringInto(State::Kind::Loaded);
    m_engine->unloadsAtOnce = unloadsAtOnce;
    m_manager->release();
    QCOMPARE(m_engine->unloadCount, 1);
    QCOMPARE(m_manager->state(), State::loaded());
    Gate gate;
    m_engine->beforeLoaded = [&gate] { return gate.passed(); };
    m_manager->loadIfNeeded();
    QCOMPARE(m_manager->state(), State::loading());
    gate.open();
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(m_engine->loadedPaths.size(), 2);
}

void ModelManagerTest::releaseWithoutALoadedModelDoesNothing()
{
    bringInto(State::Kind::Ready);
    m_manager->release();
    QCOMPARE(m_engine->unloadCount, 0);
    QCOMPARE(m_manager->state(), State::ready());
}

void ModelManagerTest::downloadStartsAtZeroWithTheSelectedModel()
{
    m_manager->download();
    QCOMPARE(m_manager->state(), State::downloading(0.0));
    QCOMPARE(m_session->started.size(), 1);
    QCOMPARE(m_session->started[0].url, firstModel().url);
    QCOMPARE(m_session->started[0].approximateSize, 986'000'000);
}

void ModelManagerTest::downloadWhileOneIsInFlightDoesNothing()
{
    m_manager->download();
    ScriptedDownloadSession::onSessionThread([&] { m_session->delegate->downloadProgressed(1, 25, 100); });
    QTRY_COMPARE(m_manager->state(), State::downloading(0.25));
    m_manager->download();
    QCOMPARE(m_manager->state(), State::downloading(0.25));
    QCOMPARE(m_session->started.size(), 1);
}

void ModelManagerTest::progressIsTheWrittenShare_data()
{
    QTest::addColumn<qint64>("written");
    QTest::addColumn<qint64>("expected");
    QTest::addColumn<double>("progress");
    QTest::newRow("a quarter") << qint64(250) << qint64(1000) << 0.25;
    QTest::newRow("all") << qint64(1000) << qint64(1000) << 1.0;
    QTest::newRow("more than all") << qint64(1500) << qint64(1000) << 1.0;
    QTest::newRow("unknown size, half a gigabyte") << qint64(500'000'000) << qint64(-1) << 0.5;
    QTest::newRow("no size, half a gigabyte") << qint64(500'000'000) << qint64(0) << 0.5;
    QTest::newRow("unknown size, one and a half") << qint64(1'500'000'000) << qint64(-1) << 1.0;
}

void ModelManagerTest::progressIsTheWrittenShare()
{
    QFETCH(qint64, written);
    QFETCH(qint64, expected);
    QFETCH(double, progress);
    m_manager->download();
    ScriptedDownloadSession::onSessionThread(
        [&] { m_session->delegate->downloadProgressed(1, written, expected); });
    QTRY_COMPARE(m_manager->state(), State::downloading(progress));
}

void ModelManagerTest::finishedFileIsMovedIntoPlaceAndLoaded()
{
    m_manager->download();
    const QString file = temporaryFile();
    QList<State::Kind> states;
    connect(m_manager.get(), &ModelManager::stateChanged, m_manager.get(),
            [&] { states.append(m_manager->state().kind); });
    finish(file);
    // Published before the callback returned, without the main thread.
    QCOMPARE(fileContent(firstModel().fileName), downloaded);
    QVERIFY(!QFile::exists(file));
    QCOMPARE(m_manager->state(), State::downloading(0.0));

    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(states, QList({State::Kind::Ready, State::Kind::Loading, State::Kind::Loaded}));
    QCOMPARE(m_engine->loadedPaths, {m_manager->directory() + u'/' + firstModel().fileName});
}

void ModelManagerTest::finishedFileReplacesAnEarlierOne()
{
    putFile(firstModel());
    m_manager->download();
    finish(temporaryFile());
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(fileContent(firstModel().fileName), downloaded);
}

void ModelManagerTest::errorStatusFailsAndLeavesAnEarlierFile()
{
    putFile(firstModel());
    m_manager->download();
    finish({}, 404);
    QTRY_COMPARE(m_manager->state(), State::failed(u"Download failed (HTTP 404)."_s));
    QCOMPARE(fileContent(firstModel().fileName), earlier);
}

void ModelManagerTest::statusBelowFourHundredCountsAsSuccess_data()
{
    QTest::addColumn<std::optional<int>>("status");
    QTest::newRow("200") << std::optional(200);
    QTest::newRow("399") << std::optional(399);
    QTest::newRow("no HTTP answer") << std::optional<int>();
}

void ModelManagerTest::statusBelowFourHundredCountsAsSuccess()
{
    QFETCH(std::optional<int>, status);
    m_manager->download();
    const QString file = temporaryFile();
    ScriptedDownloadSession::onSessionThread([&] {
        m_session->delegate->downloadFinished({1, status, file, firstModel().url});
    });
    QTRY_COMPARE(m_manager->state(), State::loaded());
}

void ModelManagerTest::failedMoveIsReported()
{
    m_manager->download();
    const QString file = temporaryFile();
    QVERIFY(QDir(m_manager->directory()).removeRecursively());
    QFile inTheWay(m_folder->filePath(u"Orvane/Models"_s));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    finish(file);
    const QString message = u"Couldn't move the download into the models folder: Not a directory."_s;
    QTRY_COMPARE(m_manager->state(), State::failed(message));
}

void ModelManagerTest::downloadThatIsNoModelIsNotPublished_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a page of a network that wants a login")
        << QByteArray("<html>Please log in</html>") << u"The file is no GGUF file."_s;
    QTest::newRow("the first half of a model") << downloaded.first(500) << u"The file ends too early."_s;
    QTest::newRow("no weights") << QByteArray("GGUF\3\0\0\0", 8) + QByteArray(16, '\0')
                                << u"The file holds no model."_s;
}

void ModelManagerTest::downloadThatIsNoModelIsNotPublished()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    putFile(firstModel());
    m_manager->download();
    const QString file = temporaryFile(content);
    finish(file);
    QCOMPARE(fileContent(firstModel().fileName), earlier);
    QVERIFY(!QFile::exists(file));
    QTRY_COMPARE(m_manager->state(), State::failed(u"The download is no usable model. "_s + reason));
    QVERIFY(m_engine->loadedPaths.isEmpty());
}

void ModelManagerTest::downloadWithoutAUsableNameIsStoredAsModel_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::newRow("no URL") << QUrl();
    QTest::newRow("no path") << QUrl(u"https://example.org"_s);
    QTest::newRow("only the root") << QUrl(u"https://example.org/"_s);
    QTest::newRow("leads upwards") << QUrl(u"https://example.org/a/%2E%2E"_s);
    QTest::newRow("query only") << QUrl(u"https://example.org?file=x.gguf"_s);
}

void ModelManagerTest::downloadWithoutAUsableNameIsStoredAsModel()
{
    QFETCH(QUrl, url);
    m_manager->download();
    const QString file = temporaryFile();
    ScriptedDownloadSession::onSessionThread([&] {
        m_session->delegate->downloadFinished({1, 200, file, url});
    });
    QCOMPARE(fileContent(u"model.gguf"_s), downloaded);
    QTRY_COMPARE(m_manager->state(), State::needsDownload());
}

void ModelManagerTest::transportErrorFails()
{
    m_manager->download();
    const DownloadError error = {DownloadError::failed, u"The connection was lost."_s};
    ScriptedDownloadSession::onSessionThread([&] { m_session->delegate->downloadEnded(1, error); });
    QTRY_COMPARE(m_manager->state(), State::failed(u"The connection was lost."_s));
    ScriptedDownloadSession::onSessionThread([&] { m_session->delegate->downloadProgressed(1, 50, 100); });
    turnTheLoop();
    QCOMPARE(m_manager->state(), State::failed(u"The connection was lost."_s));
}

void ModelManagerTest::cancellationCodeIsSilent()
{
    m_manager->download();
    const DownloadError error = {-999, u"cancelled"_s};
    ScriptedDownloadSession::onSessionThread([&] { m_session->delegate->downloadEnded(1, error); });
    turnTheLoop();
    QCOMPARE(m_manager->state(), State::downloading(0.0));
}

void ModelManagerTest::endWithoutAnErrorDoesNothing()
{
    m_manager->download();
    ScriptedDownloadSession::onSessionThread([&] { m_session->delegate->downloadEnded(1, std::nullopt); });
    turnTheLoop();
    QCOMPARE(m_manager->state(), State::downloading(0.0));
    m_manager->download();
    QCOMPARE(m_session->started.size(), 1);
}

void ModelManagerTest::downloadCanBeStartedAfterAFailure()
{
    bringInto(State::Kind::Failed);
    m_manager->download();
    QCOMPARE(m_manager->state(), State::downloading(0.0));
    QCOMPARE(m_session->started.size(), 2);
}

void ModelManagerTest::cancelButtonGoesBackToWhatTheFolderHolds()
{
    m_manager->download();
    m_manager->cancelDownload();
    QCOMPARE(m_session->cancelled, {quint64(1)});
    QCOMPARE(m_manager->state(), State::needsDownload());

    putFile(firstModel());
    m_manager->download();
    m_manager->cancelDownload();
    QCOMPARE(m_manager->state(), State::ready());
    m_manager->download();
    QCOMPARE(m_session->started.size(), 3);
}

void ModelManagerTest::cancelButtonWithoutADownloadOnlyRefreshes()
{
    bringInto(State::Kind::Failed);
    m_manager->cancelDownload();
    QCOMPARE(m_manager->state(), State::needsDownload());
    QVERIFY(m_session->cancelled.isEmpty());
}

void ModelManagerTest::fileThatFinishesJustBeforeTheCancelIsUsed()
{
    m_manager->download();
    const QString file = temporaryFile();
    // The session had finished, but the main thread is notified after the click.
    finish(file);
    m_manager->cancelDownload();
    QTRY_COMPARE(m_manager->state(), State::loaded());
}

void ModelManagerTest::lateErrorOfACancelledDownloadIsDropped()
{
    m_manager->download();
    finish({}, 500);
    const DownloadError error = {DownloadError::failed, u"The connection was lost."_s};
    ScriptedDownloadSession::onSessionThread([&] { m_session->delegate->downloadEnded(1, error); });
    m_manager->cancelDownload();
    turnTheLoop();
    QCOMPARE(m_manager->state(), State::needsDownload());
}

void ModelManagerTest::loadPutsTheSelectedFileIntoTheEngine()
{
    bringInto(State::Kind::Ready);
    Gate gate;
    m_engine->beforeLoaded = [&gate] { return gate.passed(); };
    m_manager->loadIfNeeded();
    QCOMPARE(m_manager->state(), State::loading());
    QCOMPARE(m_engine->loadedPaths, {m_manager->directory() + u'/' + firstModel().fileName});
    gate.open();
    QTRY_COMPARE(m_manager->state(), State::loaded());
}

void ModelManagerTest::loadedEngineMakesTheStateLoaded()
{
    m_engine->setLoaded(true);
    m_manager->loadIfNeeded();
    QCOMPARE(m_manager->state(), State::loaded());
    QVERIFY(m_engine->loadedPaths.isEmpty());
}

void ModelManagerTest::loadChangesNothingWhenThereIsNothingToLoad_data()
{
    QTest::addColumn<State::Kind>("kind");
    QTest::newRow("needsDownload") << State::Kind::NeedsDownload;
    QTest::newRow("downloading") << State::Kind::Downloading;
    QTest::newRow("failed") << State::Kind::Failed;
}

void ModelManagerTest::loadChangesNothingWhenThereIsNothingToLoad()
{
    QFETCH(State::Kind, kind);
    bringInto(kind);
    const State before = m_manager->state();
    putFile(firstModel());
    m_manager->loadIfNeeded();
    turnTheLoop();
    QCOMPARE(m_manager->state(), before);
    QVERIFY(m_engine->loadedPaths.isEmpty());
}

void ModelManagerTest::secondLoadWhileOneRunsOnlyWaitsForIt()
{
    bringInto(State::Kind::Ready);
    Gate gate;
    m_engine->beforeLoaded = [&gate] { return gate.passed(); };
    m_manager->loadIfNeeded();
    QSignalSpy changes(m_manager.get(), &ModelManager::willChange);
    const QCoro::Task<void> second = m_manager->loadIfNeeded();
    turnTheLoop();
    QCOMPARE(m_engine->loadedPaths.size(), 1);
    QCOMPARE(changes.count(), 0);
    QVERIFY(!second.isReady());
    gate.open();
    QTRY_VERIFY(second.isReady());
    QCOMPARE(m_manager->state(), State::loaded());
    QCOMPARE(m_engine->loadedPaths.size(), 1);
}

void ModelManagerTest::waitForALoadEndsWithTheManager()
{
    bringInto(State::Kind::Ready);
    Gate gate;
    m_engine->beforeLoaded = [&gate] { return gate.passed(); };
    const QCoro::Task<void> load = m_manager->loadIfNeeded();
    const QCoro::Task<void> waiting = m_manager->loadIfNeeded();
    QVERIFY(!waiting.isReady());
    m_manager.reset();
    gate.open();
    QTRY_VERIFY(waiting.isReady());
}

void ModelManagerTest::waitForALoadGoesOnWhenTheModelIsSwitched()
{
    bringInto(State::Kind::Ready);
    putFile(secondModel());
    Gate first;
    m_engine->beforeLoaded = [&first] { return first.passed(); };
    m_manager->loadIfNeeded();
    const QCoro::Task<void> waiting = m_manager->loadIfNeeded();
    Gate second;
    m_engine->beforeLoaded = [&second] { return second.passed(); };
    m_manager->select(secondModel());
    QTRY_COMPARE(m_engine->loadedPaths.size(), 2);
    QCOMPARE(m_manager->state(), State::loading());
    first.open();
    turnTheLoop();
    QVERIFY(!waiting.isReady());
    second.open();
    QTRY_VERIFY(waiting.isReady());
    QCOMPARE(m_manager->state(), State::loaded());
}

void ModelManagerTest::loadedStateWithAnEmptyEngineLoadsAgain()
{
    bringInto(State::Kind::Loaded);
    m_engine->setLoaded(false);
    m_manager->loadIfNeeded();
    QTRY_COMPARE(m_engine->loadedPaths.size(), 2);
    QTRY_COMPARE(m_manager->state(), State::loaded());
}

void ModelManagerTest::failedLoadShowsTheEnginesMessage()
{
    bringInto(State::Kind::Ready);
    m_engine->loadError = InferenceError(InferenceError::Code::LoadFailed);
    m_manager->loadIfNeeded();
    QTRY_COMPARE(m_manager->state(), State::failed(u"Couldn't load the model file."_s));
    m_engine->loadError.reset();
    m_manager->loadIfNeeded();
    turnTheLoop();
    QCOMPARE(m_manager->state(), State::failed(u"Couldn't load the model file."_s));
    m_manager->refresh();
    m_manager->loadIfNeeded();
    QTRY_COMPARE(m_manager->state(), State::loaded());
}

void ModelManagerTest::tooLittleMemoryNamesASmallerModel()
{
    const QString sentence =
        u"There isn't enough free memory for this model. Close other programs and try again."_s;
    m_engine->loadError = InferenceError(InferenceError::Code::TooLittleMemory);
    bringInto(State::Kind::Ready);
    m_manager->loadIfNeeded();
    QTRY_COMPARE(m_manager->state(), State::failed(sentence));
    putFile(secondModel());
    m_manager->select(secondModel());
    QTRY_COMPARE(m_manager->state(), State::failed(sentence + u" %1 takes less."_s.arg(firstModel().name)));
}

void ModelManagerTest::fileThatIsNoModelCountsAsMissingOnceItsLoadHasFailed()
{
    putFile(firstModel(), "no model at all");
    m_manager->refresh();
    QCOMPARE(m_manager->state(), State::ready());
    m_engine->loadError = InferenceError(InferenceError::Code::LoadFailed);
    m_manager->loadIfNeeded();
    QTRY_COMPARE(m_manager->state(), State::failed(u"Couldn't load the model file."_s));
    m_manager->refresh();
    QCOMPARE(m_manager->state(), State::needsDownload());
    QCOMPARE(fileContent(firstModel().fileName), "no model at all");

    m_manager->select(secondModel());
    m_manager->select(firstModel());
    QCOMPARE(m_manager->state(), State::needsDownload());
    m_engine->loadError.reset();
    m_manager->download();
    finish(temporaryFile());
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QCOMPARE(fileContent(firstModel().fileName), downloaded);
}

void ModelManagerTest::failTwice(InferenceError::Code code)
{
    bringInto(State::Kind::Ready);
    m_engine->loadError = InferenceError(code);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(m_manager->state(), State::ready());
        m_manager->loadIfNeeded();
        QTRY_COMPARE(m_manager->state(), State::failed(m_engine->loadError->errorDescription()));
        m_manager->refresh();
    }
}

void ModelManagerTest::fileThatTheEngineRefusesTwiceCountsAsMissing()
{
    failTwice(InferenceError::Code::LoadFailed);
    QCOMPARE(m_manager->state(), State::needsDownload());
    m_engine->loadError.reset();
    m_manager->download();
    finish(temporaryFile());
    QTRY_COMPARE(m_manager->state(), State::loaded());
}

void ModelManagerTest::contextThatFailsTwiceIsNotTheFilesFault()
{
    failTwice(InferenceError::Code::ContextFailed);
    QCOMPARE(m_manager->state(), State::ready());
}

void ModelManagerTest::fileThatWasReplacedIsLoadedAfterAFailure()
{
    putFile(firstModel(), QByteArray(earlier.size(), 'x'));
    m_manager->refresh();
    m_engine->loadError = InferenceError(InferenceError::Code::LoadFailed);
    m_manager->loadIfNeeded();
    QTRY_COMPARE(m_manager->state().kind, State::Kind::Failed);
    m_engine->loadError.reset();
    putFile(firstModel()); // a copy put there by the user
    m_manager->refresh();
    QCOMPARE(m_manager->state(), State::ready());
    m_manager->loadIfNeeded();
    QTRY_COMPARE(m_manager->state(), State::loaded());
    QVERIFY(m_session->started.isEmpty());
}

void ModelManagerTest::loadThatOutlivesTheManagerIsHarmless()
{
    bringInto(State::Kind::Ready);
    Gate gate;
    m_engine->beforeLoaded = [&gate] { return gate.passed(); };
    const QCoro::Task<void> load = m_manager->loadIfNeeded();
    QVERIFY(!load.isReady());
    m_manager.reset();
    gate.open();
    QTRY_VERIFY(load.isReady());
}

void ModelManagerTest::everyChangeIsAnnouncedBeforeItHappens()
{
    bringInto(State::Kind::Ready);
    QList<QPair<QString, State::Kind>> before;
    connect(m_manager.get(), &ModelManager::willChange, m_manager.get(), [&] {
        before.append({m_manager->selected().id, m_manager->state().kind});
    });
    QSignalSpy states(m_manager.get(), &ModelManager::stateChanged);
    QSignalSpy selections(m_manager.get(), &ModelManager::selectedChanged);
    m_manager->select(secondModel());
    const QList<QPair<QString, State::Kind>> expected = {{firstModel().id, State::Kind::Ready},
                                                         {secondModel().id, State::Kind::Ready}};
    QCOMPARE(before, expected);
    QCOMPARE(states.count(), 1);
    QCOMPARE(selections.count(), 1);
}

void ModelManagerTest::settingTheSameStateAnnouncesNothing()
{
    QSignalSpy changes(m_manager.get(), &ModelManager::willChange);
    m_manager->refresh();
    QCOMPARE(changes.count(), 0);
}

QTEST_GUILESS_MAIN(ModelManagerTest)
#include "ModelManagerTest.moc"
