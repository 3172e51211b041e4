// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/DoctorCommand.h"

#include "Inference/TinyModel.h"
#include "OrvaneApp/CommandLine/ExitStatus.h"
#include "OrvaneApp/CommandLine/TerminalBench.h"
#include "Support/ScriptedDownloadSession.h"
#include "Support/ScriptedEngine.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using Format = DoctorReport::Format;
using Need = DiagnosticCheck::Need;
using State = DiagnosticCheck::State;

Q_DECLARE_METATYPE(QList<DiagnosticCheck>)

namespace {

// Scripted checks of the desktop.
class ScriptedDiagnosis : public Diagnosis
{
public:
    QList<DiagnosticCheck> checks;
    bool answers = true;

    QCoro::Task<QList<DiagnosticCheck>> examine() override
    {
        const QFuture<void> never = m_never.future();
        if (!answers)
            co_await never;
        const QList<DiagnosticCheck> result = checks;
        co_return result;
    }

private:
    QPromise<void> m_never;
};

const LlamaLibrary::Description onProcessor{u"ggml 1.2.3"_s, {u"CPU (A processor)"_s}};

// The command with the real model manager and a folder of its own.
class DoctorBench
{
public:
    explicit DoctorBench(const TerminalTraits &traits = TerminalBench::plain)
        : storage{folder.filePath(u"data"_s), folder.filePath(u"settings.ini"_s)}, terminal(traits),
          manager(std::make_unique<ScriptedEngine>(), std::make_unique<ScriptedDownloadSession>(), storage)
    {
        TinyModel().write(modelPath());
    }

    QString modelPath() const { return manager.directory() + u'/' + manager.selected().fileName; }

    void writeModel(const QByteArray &content) const
    {
        QFile file(modelPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    // The exit status, or -1 on a timeout.
    int run(Format format = Format::Text)
    {
        const auto describe = [description = llama] { return description; };
        DoctorCommand command(manager, diagnosis, describe, terminal.terminal);
        QSignalSpy ended(&command, &DoctorCommand::finished);
        command.start(format);
        return !ended.isEmpty() || ended.wait(20'000) ? ended.constFirst().constFirst().toInt() : -1;
    }

    // The last run's report as JSON.
    QJsonObject report() const { return QJsonDocument::fromJson(terminal.output().toUtf8()).object(); }
    QJsonObject check(const QString &identifier) const
    {
        for (const QJsonValue &value : report()[u"checks"_s].toArray()) {
            if (value[u"id"_s] == identifier)
                return value.toObject();
        }
        return {};
    }

    QTemporaryDir folder;
    ModelStorage storage;
    TerminalBench terminal;
    ModelManager manager;
    ScriptedDiagnosis diagnosis;
    LlamaLibrary::Description llama = onProcessor;
};

DiagnosticCheck needed(const QString &identifier = u"keyboard"_s)
{
    return {identifier, u"Keyboard"_s};
}

DiagnosticCheck comfort()
{
    return {u"hot-key"_s, u"Hot key"_s, Need::Comfort};
}

} // namespace

class DoctorCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theReportSaysWhatIsFoundAndWhatToDo();
    void scriptsReadJson();
    void theExitStatusTellsWhatIsMissing_data();
    void theExitStatusTellsWhatIsMissing();
    void theLastLineSumsUp_data();
    void theLastLineSumsUp();
    void textFromTheDesktopStaysOnItsLine();
    void theModelFileIsLookedAt_data();
    void theModelFileIsLookedAt();
    void theDevicesOfLlamaAreNamed();
    void aLibraryThatIsStuckIsNotWaitedFor();
    void jsonShowsNoProgress();
    void anInterruptionEndsItAtOnce();
};

void DoctorCommandTest::theReportSaysWhatIsFoundAndWhatToDo()
{
    DoctorBench bench;
    bench.diagnosis.checks = {needed().working(u"It types."_s),
                              needed().broken(u"It doesn't type."_s, u"Plug it in."_s),
                              needed().limited(u"It types slowly."_s, u"Clean it."_s),
                              comfort().absent(u"There is none."_s, u"Choose one."_s)};
    QCOMPARE(bench.run(), ExitStatus::desktopUnfit);
    QCOMPARE(bench.terminal.output(), u"✓ Keyboard: It types.\n"
                                      "✗ Keyboard: It doesn't type.\n"
                                      "    Plug it in.\n"
                                      "! Keyboard: It types slowly.\n"
                                      "    Clean it.\n"
                                      "! Hot key: There is none.\n"
                                      "    Choose one.\n"
                                      "✓ Model: Qwen2.5 1.5B Instruct is on this machine (1 MB).\n"
                                      "✓ llama.cpp: ggml 1.2.3, on CPU (A processor).\n"
                                      "\n"
                                      "Tasks need what is marked ✗.\n"_s);
    QCOMPARE(bench.terminal.errors(), QString());
}

void DoctorCommandTest::scriptsReadJson()
{
    DoctorBench bench;
    bench.diagnosis.checks = {comfort().limited(u"“A\\B”."_s, u"Do it."_s), needed().working(u"Fine."_s)};
    QCOMPARE(bench.run(Format::Json), ExitStatus::done);
    const QJsonObject report = bench.report();
    QCOMPARE(report.keys(), QStringList({u"checks"_s, u"works"_s}));
    QCOMPARE(report[u"works"_s], QJsonValue(true));
    QStringList identifiers;
    for (const QJsonValue &value : report[u"checks"_s].toArray()) {
        identifiers << value[u"id"_s].toString();
        QCOMPARE(value.toObject().keys(),
                 QStringList({u"advice"_s, u"finding"_s, u"id"_s, u"needed"_s, u"state"_s, u"title"_s}));
    }
    QCOMPARE(identifiers, QStringList({u"hot-key"_s, u"keyboard"_s, u"model"_s, u"llama"_s}));
    const QJsonObject expected{{u"id"_s, u"hot-key"_s},      {u"title"_s, u"Hot key"_s},
                               {u"state"_s, u"limited"_s},   {u"needed"_s, false},
                               {u"finding"_s, u"“A\\B”."_s}, {u"advice"_s, u"Do it."_s}};
    QCOMPARE(bench.check(u"hot-key"_s), expected);
    QCOMPARE(bench.check(u"keyboard"_s)[u"advice"_s], QJsonValue(QString()));
}

void DoctorCommandTest::theExitStatusTellsWhatIsMissing_data()
{
    QTest::addColumn<QList<DiagnosticCheck>>("checks");
    QTest::addColumn<int>("status");
    const QString none;
    const DiagnosticCheck model = needed(u"model"_s);
    const auto row = [](const char *name, const QList<DiagnosticCheck> &checks, int status) {
        QTest::newRow(name) << checks << status;
    };
    row("all works", {needed().working(none), comfort().working(none), model.working(none)}, 0);
    row("needed, limited", {needed().limited(none, none)}, 0);
    row("needed, broken", {needed().broken(none, none)}, 4);
    row("needed, absent", {needed().absent(none, none)}, 4);
    row("comfort, limited", {comfort().limited(none, none)}, 0);
    row("comfort, broken", {comfort().broken(none, none)}, 0);
    row("comfort, absent", {comfort().absent(none, none)}, 0);
    row("model absent", {needed().working(none), model.absent(none, none)}, 3);
    row("model broken", {model.broken(none, none), comfort().absent(none, none)}, 3);
    row("model first, desktop as well", {model.absent(none, none), needed().broken(none, none)}, 4);
    row("desktop first, model as well", {needed().broken(none, none), model.absent(none, none)}, 4);
    row("nothing was checked", {}, 0);
}

void DoctorCommandTest::theExitStatusTellsWhatIsMissing()
{
    QFETCH(QList<DiagnosticCheck>, checks);
    QTEST(DoctorReport::exitStatus(checks), "status");
}

void DoctorCommandTest::theLastLineSumsUp_data()
{
    QTest::addColumn<QList<DiagnosticCheck>>("checks");
    QTest::addColumn<QString>("line");
    QTest::newRow("works") << QList{comfort().absent(u"No."_s, u"Do."_s)} << u"All that tasks need works."_s;
    QTest::newRow("no model") << QList{needed(u"model"_s).absent(u"No."_s, u"Do."_s)}
                              << u"All that is missing is a model."_s;
    QTest::newRow("unfit") << QList{needed().absent(u"No."_s, u"Do."_s)} << u"Tasks need what is marked ✗."_s;
}

void DoctorCommandTest::theLastLineSumsUp()
{
    QFETCH(QList<DiagnosticCheck>, checks);
    QFETCH(QString, line);
    TerminalBench bench;
    DoctorReport::write(checks, Format::Text, bench.terminal);
    QVERIFY2(bench.output().endsWith(u"\n\n"_s + line + u'\n'), qPrintable(bench.output()));
}

void DoctorCommandTest::textFromTheDesktopStaysOnItsLine()
{
    const QString hostile = u"Evil\n✓ Model: fine\r\x1b[2J\u202E<|im_start|>\u2028end"_s;
    DoctorBench bench;
    bench.diagnosis.checks = {needed().limited(hostile, hostile)};
    bench.run();
    const QString line = u"Evil ✓ Model: fine  [2J< |im_start| > end"_s;
    QVERIFY2(bench.terminal.output().startsWith(u"! Keyboard: %1\n    %1\n✓ Model"_s.arg(line)),
             qPrintable(bench.terminal.output()));

    DoctorBench forScripts;
    forScripts.diagnosis.checks = bench.diagnosis.checks;
    forScripts.run(Format::Json);
    QCOMPARE(forScripts.check(u"keyboard"_s)[u"finding"_s], QJsonValue(line));
}

void DoctorCommandTest::theModelFileIsLookedAt_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("finding");
    QTest::newRow("another file") << QByteArray("no model at all")
                                  << u"Qwen2.5 1.5B Instruct can't be used. The file is no GGUF file."_s;
    QTest::newRow("empty") << QByteArray()
                           << u"Qwen2.5 1.5B Instruct can't be used. The file is no GGUF file."_s;
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"whole"_s);
    TinyModel().write(path);
    QFile whole(path);
    QVERIFY(whole.open(QIODevice::ReadOnly));
    QTest::newRow("one half") << whole.read(whole.size() / 2)
                              << u"Qwen2.5 1.5B Instruct can't be used. The file ends too early."_s;
}

void DoctorCommandTest::theModelFileIsLookedAt()
{
    QFETCH(QByteArray, content);
    DoctorBench bench;
    bench.writeModel(content);
    QCOMPARE(bench.run(Format::Json), ExitStatus::notReady);
    const QJsonObject check = bench.check(u"model"_s);
    QCOMPARE(check[u"state"_s], QJsonValue(u"broken"_s));
    QTEST(check[u"finding"_s].toString(), "finding");
    QCOMPARE(check[u"advice"_s].toString(), u"Replace it with: orvane models download"_s);

    DoctorBench without;
    QVERIFY(QFile::remove(without.modelPath()));
    QCOMPARE(without.run(Format::Json), ExitStatus::notReady);
    QCOMPARE(without.check(u"model"_s)[u"state"_s], QJsonValue(u"absent"_s));
    QCOMPARE(without.check(u"model"_s)[u"advice"_s], QJsonValue(u"Get it with: orvane models download"_s));
}

void DoctorCommandTest::theDevicesOfLlamaAreNamed()
{
    DoctorBench bench;
    bench.llama = {u"ggml 1.2.3, commit abc"_s, {u"Vulkan0 (A card)"_s, u"CPU"_s}};
    QCOMPARE(bench.run(Format::Json), ExitStatus::done);
    QCOMPARE(bench.check(u"llama"_s)[u"finding"_s],
             QJsonValue(u"ggml 1.2.3, commit abc, on Vulkan0 (A card), CPU."_s));

    DoctorBench without;
    without.llama.devices.clear();
    QCOMPARE(without.run(Format::Json), ExitStatus::desktopUnfit);
    QCOMPARE(without.check(u"llama"_s)[u"state"_s], QJsonValue(u"broken"_s));
}

void DoctorCommandTest::aLibraryThatIsStuckIsNotWaitedFor()
{
    const auto released = std::make_shared<QSemaphore>();
    const auto stuck = [released] {
        released->acquire();
        return onProcessor;
    };
    DoctorBench bench;
    DoctorCommand command(bench.manager, bench.diagnosis, stuck, bench.terminal.terminal);
    QSignalSpy ended(&command, &DoctorCommand::finished);
    command.start(Format::Json);
    const bool hasEnded = ended.wait(20'000);
    released->release();
    QVERIFY(hasEnded);
    QCOMPARE(ended.constFirst().constFirst().toInt(), ExitStatus::desktopUnfit);
    QCOMPARE(bench.check(u"llama"_s)[u"state"_s], QJsonValue(u"broken"_s));
    QCOMPARE(bench.check(u"model"_s)[u"state"_s], QJsonValue(u"works"_s));
}

void DoctorCommandTest::jsonShowsNoProgress()
{
    DoctorBench bench(TerminalBench::colourful);
    bench.diagnosis.checks = {needed().broken(u"No."_s, u"Do."_s)};
    bench.run(Format::Json);
    QVERIFY2(bench.terminal.output().startsWith(u"{\n"_s), qPrintable(bench.terminal.output()));
    QVERIFY(!bench.terminal.output().contains(u'␛'));
}

void DoctorCommandTest::anInterruptionEndsItAtOnce()
{
    DoctorBench bench;
    bench.diagnosis.answers = false;
    const auto describe = [] { return onProcessor; };
    DoctorCommand command(bench.manager, bench.diagnosis, describe, bench.terminal.terminal);
    QSignalSpy ended(&command, &DoctorCommand::finished);
    command.start(Format::Text);
    command.interrupt();
    QCOMPARE(ended.size(), 1);
    QCOMPARE(ended.constFirst().constFirst().toInt(), ExitStatus::endedOtherwise);
    QCOMPARE(bench.terminal.output(), QString());
}

QTEST_GUILESS_MAIN(DoctorCommandTest)
#include "DoctorCommandTest.moc"
