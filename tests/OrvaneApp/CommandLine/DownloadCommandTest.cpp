// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/DownloadCommand.h"
#include "Models/Download/HttpDownloadSession.h"
#include "Models/Download/LocalHttpServer.h"
#include "OrvaneApp/CommandLine/ExitStatus.h"
#include "OrvaneApp/CommandLine/ModelsCommand.h"
#include "OrvaneApp/CommandLine/TerminalBench.h"
#include "Support/ModelBytes.h"
#include "Support/ScriptedEngine.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 modelSize = 1'000'000;

// The real model manager and download session, with a local server.
class DownloadBench
{
public:
    explicit DownloadBench(const TerminalTraits &traits = TerminalBench::plain)
        : storage{folder.filePath(u"data"_s), folder.filePath(u"settings.ini"_s)},
          terminal(traits), model{u"local"_s,      u"Local Model"_s,
                                  u"Small"_s,      server.url(u"/local.gguf"_s),
                                  u"local.gguf"_s, 1},
          manager(std::make_unique<ScriptedEngine>(),
                  std::make_unique<HttpDownloadSession>(storage.downloadsDirectory()), storage)
    {
        LocalHttpServer::Resource resource;
        resource.content = ModelBytes::plausible(modelSize);
        resource.entityTag = "\"1\"";
        server.set(u"/local.gguf"_s, resource);
        held = resource;
        held.holdAfter = modelSize / 2;
        manager.select(model);
    }

    // Runs the command; its exit status, or -1 on a timeout.
    int run()
    {
        DownloadCommand command(manager, terminal.terminal);
        QSignalSpy ended(&command, &DownloadCommand::finished);
        command.start();
        return !ended.isEmpty() || ended.wait() ? ended.constFirst().constFirst().toInt() : -1;
    }

    QString path() const { return manager.directory() + u"/local.gguf"_s; }

    QTemporaryDir folder;
    ModelStorage storage;
    LocalHttpServer server;
    LocalHttpServer::Resource held; // the server sends only half of it
    TerminalBench terminal;
    LocalModel model;
    ModelManager manager;
};

} // namespace

class DownloadCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theModelIsDownloadedAndTriedOut();
    void aTerminalShowsABar();
    void aModelThatIsThereIsNotDownloadedAgain();
    void aFileThatIsNoModelIsReplaced();
    void aFailureIsSaidAndEndsWithOne();
    void anInterruptedDownloadContinues();
    void theBarIsFilledAndThePercentageTruncated_data();
    void theBarIsFilledAndThePercentageTruncated();
    void theListSaysWhatIsSelectedAndPresent();
    void aSelectionLasts();
};

void DownloadCommandTest::theModelIsDownloadedAndTriedOut()
{
    DownloadBench bench;
    QCOMPARE(bench.run(), ExitStatus::done);
    QCOMPARE(QFile(bench.path()).size(), modelSize);
    const QString output = bench.terminal.output();
    QVERIFY2(output.startsWith(u"Downloading Local Model (~1 MB)\n"_s), qPrintable(output));
    QVERIFY2(output.endsWith(u"✓ Local Model is ready.\n"_s), qPrintable(output));
    // At most one line for each tenth.
    QVERIFY2(output.count(u"% of ~1 MB\n"_s) <= 10, qPrintable(output));
    QVERIFY(!output.contains(u'␍'));
}

void DownloadCommandTest::aTerminalShowsABar()
{
    DownloadBench bench(TerminalBench::colourless);
    bench.server.set(u"/local.gguf"_s, bench.held);
    DownloadCommand command(bench.manager, bench.terminal.terminal);
    QSignalSpy ended(&command, &DownloadCommand::finished);
    command.start();
    QTRY_VERIFY(bench.terminal.output().contains(u"[###############---------------] 50% of ~1 MB"_s));
    bench.server.release();
    QTRY_COMPARE(ended.size(), 1);
    QVERIFY(bench.terminal.screen().endsWith(u"✓ Local Model is ready.\n"_s));
    QVERIFY(!bench.terminal.screen().contains(u'['));
}

void DownloadCommandTest::aModelThatIsThereIsNotDownloadedAgain()
{
    DownloadBench bench;
    QCOMPARE(bench.run(), ExitStatus::done);
    bench.manager.refresh();
    QCOMPARE(bench.run(), ExitStatus::done);
    QVERIFY(bench.terminal.output().endsWith(u"Local Model is already on this machine.\n"_s));
    QCOMPARE(bench.server.requests().size(), 1);
}

void DownloadCommandTest::aFileThatIsNoModelIsReplaced()
{
    DownloadBench bench;
    QFile broken(bench.path());
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("no model at all");
    broken.close();
    bench.manager.refresh();
    QCOMPARE(bench.run(), ExitStatus::done);
    QCOMPARE(QFile(bench.path()).size(), modelSize);
    QVERIFY(bench.terminal.output().startsWith(
        u"The file that is here can't be used; it will be replaced.\nDownloading Local Model (~1 MB)\n"_s));
}

void DownloadCommandTest::aFailureIsSaidAndEndsWithOne()
{
    DownloadBench bench;
    LocalHttpServer::Resource missing;
    missing.status = 404;
    bench.server.set(u"/local.gguf"_s, missing);
    QCOMPARE(bench.run(), ExitStatus::endedOtherwise);
    QCOMPARE(bench.terminal.errors(), u"orvane: Download failed (HTTP 404).\n"_s);
}

void DownloadCommandTest::anInterruptedDownloadContinues()
{
    DownloadBench bench;
    bench.server.set(u"/local.gguf"_s, bench.held);
    {
        DownloadCommand command(bench.manager, bench.terminal.terminal);
        QSignalSpy ended(&command, &DownloadCommand::finished);
        command.start();
        QTRY_VERIFY(bench.terminal.output().contains(u"50% of ~1 MB"_s));
        command.interrupt();
        QCOMPARE(ended.size(), 1);
        QCOMPARE(ended.constFirst().constFirst().toInt(), ExitStatus::endedOtherwise);
    }
    QVERIFY(bench.terminal.output().endsWith(u"Stopped. The same command goes on where it was.\n"_s));
    QVERIFY(!QFile::exists(bench.path()));

    LocalHttpServer::Resource whole = bench.held;
    whole.holdAfter = -1;
    bench.server.set(u"/local.gguf"_s, whole);
    QCOMPARE(bench.run(), ExitStatus::done);
    QCOMPARE(QFile(bench.path()).size(), modelSize);
    QVERIFY(bench.server.requests().constLast().headers.contains("range"));
}

void DownloadCommandTest::theBarIsFilledAndThePercentageTruncated_data()
{
    QTest::addColumn<double>("progress");
    QTest::addColumn<QString>("bar");
    QTest::newRow("nothing") << 0.0 << u"[--------] 0% of ~986 MB"_s;
    QTest::newRow("three eighths") << 0.375 << u"[###-----] 37% of ~986 MB"_s;
    QTest::newRow("almost all") << 0.999 << u"[#######-] 99% of ~986 MB"_s;
    QTest::newRow("all") << 1.0 << u"[########] 100% of ~986 MB"_s;
}

void DownloadCommandTest::theBarIsFilledAndThePercentageTruncated()
{
    QFETCH(double, progress);
    QFETCH(QString, bar);
    QCOMPARE(DownloadCommand::bar(progress, 8, 986), bar);
}

void DownloadCommandTest::theListSaysWhatIsSelectedAndPresent()
{
    DownloadBench bench;
    bench.manager.select(LocalModel::catalog().constLast());
    const QString first = bench.manager.path(LocalModel::catalog().constFirst());
    QVERIFY(ModelBytes::write(first));
    QCOMPARE(ModelsCommand::list(bench.manager, {}, bench.terminal.terminal), ExitStatus::done);
    const QString expected =
        u"  qwen2.5-1.5b  Qwen2.5 1.5B Instruct — Fast and light · ~1 GB — on this machine\n"
        "* llama3.2-3b   Llama 3.2 3B Instruct — Smarter planning · ~2 GB — not downloaded\n"
        "\n"
        "* is selected. The files are in %1\n"
        "An idle model stays in memory.\n"_s;
    QCOMPARE(bench.terminal.output(), expected.arg(bench.manager.directory()));

    QVERIFY(QFile::resize(first, 100));
    QCOMPARE(ModelsCommand::list(bench.manager, {}, bench.terminal.terminal), ExitStatus::done);
    QVERIFY(bench.terminal.output().contains(u"~1 GB — its file can't be used\n"_s));
    const LocalModel broken = LocalModel::catalog().constFirst();
    QCOMPARE(ModelsCommand::select(bench.manager, broken, bench.terminal.terminal), ExitStatus::done);
    QVERIFY(bench.terminal.output().endsWith(
        u"Its file can't be used. Replace it with: orvane models download\n"_s));
}

void DownloadCommandTest::aSelectionLasts()
{
    DownloadBench bench;
    const LocalModel other = LocalModel::catalog().constLast();
    QCOMPARE(ModelsCommand::select(bench.manager, other, bench.terminal.terminal), ExitStatus::done);
    QCOMPARE(bench.terminal.output(),
             u"Llama 3.2 3B Instruct is selected.\n"
             "It isn't on this machine yet. Get it with: orvane models download\n"_s);
    const ModelManager later(std::make_unique<ScriptedEngine>(),
                             std::make_unique<HttpDownloadSession>(bench.storage.downloadsDirectory()),
                             bench.storage);
    QVERIFY(later.selected() == other);
}

QTEST_GUILESS_MAIN(DownloadCommandTest)
#include "DownloadCommandTest.moc"
