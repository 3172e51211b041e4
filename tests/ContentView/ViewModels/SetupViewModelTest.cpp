// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/SetupViewModel.h"

#include "Agent/SessionBench.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

using ModelFile = SessionBench::ModelFile;

class SetupViewModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theChoicesAreTheCatalogInItsOrder();
    void choosingARowSelectsTheModel();
    void withoutTheFileADownloadIsOffered();
    void theDownloadShowsHowFarItIs_data();
    void theDownloadShowsHowFarItIs();
    void cancellingGoesBackToTheOffer();
    void whileTheModelLoadsItSaysSo();
    void aFailureShowsItsMessage();
    void tryingAgainDownloadsAMissingFile();
    void tryingAgainLoadsAFileThatIsThere();
    void tryingAgainReplacesAFileThatIsNoModel();
};

void SetupViewModelTest::theChoicesAreTheCatalogInItsOrder()
{
    SessionBench bench;
    const SetupViewModel setup(bench.models);
    const QStringList choices = setup.choices();
    QCOMPARE(choices.size(), LocalModel::catalog().size());
    for (qsizetype i = 0; i < choices.size(); ++i) {
        const LocalModel &model = LocalModel::catalog()[i];
        QCOMPARE(choices[i], model.name + QString::fromUtf8(" \xE2\x80\x94 ") + model.detail);
    }
    QCOMPARE(setup.selectedModel(), 0);
}

void SetupViewModelTest::choosingARowSelectsTheModel()
{
    SessionBench bench(ModelFile::Missing);
    SetupViewModel setup(bench.models);
    const QSignalSpy changes(&setup, &SetupViewModel::selectedModelChanged);
    setup.select(1);
    QCOMPARE(bench.models.selected().id, LocalModel::catalog()[1].id);
    QCOMPARE(setup.selectedModel(), 1);
    QCOMPARE(setup.downloadLabel(), u"Download "_s + LocalModel::catalog()[1].name);
    QCOMPARE(changes.size(), 1);
}

void SetupViewModelTest::withoutTheFileADownloadIsOffered()
{
    SessionBench bench(ModelFile::Missing);
    SetupViewModel setup(bench.models);
    QCOMPARE(setup.step(), SetupViewModel::NeedsDownload);
    QCOMPARE(setup.downloadLabel(), u"Download "_s + LocalModel::catalog()[0].name);
    setup.download();
    QCOMPARE(setup.step(), SetupViewModel::Downloading);
    QCOMPARE(bench.downloads->started.size(), 1);
    QCOMPARE(bench.downloads->started[0].url, LocalModel::catalog()[0].url);
}

void SetupViewModelTest::theDownloadShowsHowFarItIs_data()
{
    QTest::addColumn<qint64>("written");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << qint64(0) << u"0% of ~986 MB"_s;
    QTest::newRow("truncated, not rounded") << qint64(375) << u"37% of ~986 MB"_s;
    QTest::newRow("almost there") << qint64(999) << u"99% of ~986 MB"_s;
    QTest::newRow("all") << qint64(1000) << u"100% of ~986 MB"_s;
}

void SetupViewModelTest::theDownloadShowsHowFarItIs()
{
    QFETCH(qint64, written);
    SessionBench bench(ModelFile::Missing);
    SetupViewModel setup(bench.models);
    const auto withTheSize = [](const LocalModel &model) { return model.sizeMB == 986; };
    const QList<LocalModel> &catalog = LocalModel::catalog();
    const auto model = std::find_if(catalog.begin(), catalog.end(), withTheSize);
    QVERIFY(model != catalog.end());
    setup.select(static_cast<int>(model - catalog.begin()));
    setup.download();
    ScriptedDownloadSession::onSessionThread(
        [&] { bench.downloads->delegate->downloadProgressed(1, written, 1000); });
    QTRY_COMPARE(setup.progress(), static_cast<double>(written) / 1000.0);
    QTEST(setup.progressText(), "text");
}

void SetupViewModelTest::cancellingGoesBackToTheOffer()
{
    SessionBench bench(ModelFile::Missing);
    SetupViewModel setup(bench.models);
    setup.download();
    setup.cancel();
    QCOMPARE(setup.step(), SetupViewModel::NeedsDownload);
    QCOMPARE(bench.downloads->cancelled, QList<quint64>{1});
}

void SetupViewModelTest::whileTheModelLoadsItSaysSo()
{
    SessionBench bench;
    const SetupViewModel setup(bench.models);
    QCOMPARE(setup.step(), SetupViewModel::Loading);
    const QCoro::Task<void> loading = bench.models.loadIfNeeded();
    QTRY_COMPARE(setup.step(), SetupViewModel::Done);
}

void SetupViewModelTest::aFailureShowsItsMessage()
{
    SessionBench bench;
    const SetupViewModel setup(bench.models);
    bench.engine->loadError = InferenceError(InferenceError::Code::LoadFailed);
    const QCoro::Task<void> loading = bench.models.loadIfNeeded();
    QTRY_COMPARE(setup.step(), SetupViewModel::Failed);
    QCOMPARE(setup.message(), bench.engine->loadError->errorDescription());
}

void SetupViewModelTest::tryingAgainDownloadsAMissingFile()
{
    SessionBench bench(ModelFile::Missing);
    SetupViewModel setup(bench.models);
    setup.download();
    ScriptedDownloadSession::onSessionThread([&] {
        bench.downloads->delegate->downloadEnded(1, DownloadError{.message = u"The line is down."_s});
    });
    QTRY_COMPARE(setup.step(), SetupViewModel::Failed);
    setup.tryAgain();
    QCOMPARE(setup.step(), SetupViewModel::Downloading);
    QCOMPARE(bench.downloads->started.size(), 2);
}

void SetupViewModelTest::tryingAgainLoadsAFileThatIsThere()
{
    SessionBench bench;
    SetupViewModel setup(bench.models);
    bench.engine->loadError = InferenceError(InferenceError::Code::LoadFailed);
    const QCoro::Task<void> loading = bench.models.loadIfNeeded();
    QTRY_COMPARE(setup.step(), SetupViewModel::Failed);
    bench.engine->loadError.reset();
    setup.tryAgain();
    QTRY_COMPARE(setup.step(), SetupViewModel::Done);
    QVERIFY(bench.downloads->started.isEmpty());
}

void SetupViewModelTest::tryingAgainReplacesAFileThatIsNoModel()
{
    SessionBench bench;
    SetupViewModel setup(bench.models);
    QFile broken(bench.models.path(bench.models.selected()));
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("no model at all");
    broken.close();
    bench.engine->loadError = InferenceError(InferenceError::Code::LoadFailed);
    const QCoro::Task<void> loading = bench.models.loadIfNeeded();
    QTRY_COMPARE(setup.step(), SetupViewModel::Failed);
    QCOMPARE(setup.message(), u"Couldn't load the model file."_s);
    setup.tryAgain();
    QCOMPARE(setup.step(), SetupViewModel::Downloading);
    QCOMPARE(bench.downloads->started.size(), 1);
    QVERIFY(broken.exists()); // kept until a download replaces it
}

QTEST_GUILESS_MAIN(SetupViewModelTest)
#include "SetupViewModelTest.moc"
