// SPDX-License-Identifier: Apache-2.0
#include "Models/LocalModel.h"
#include "OrvaneApp/CommandLine/ExitStatus.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// The built program, with its own folders and no desktop.
class ProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void helpIsPrinted_data();
    void helpIsPrinted();
    void theVersionIsPrinted();
    void wrongUseEndsWithSixtyFour_data();
    void wrongUseEndsWithSixtyFour();
    void withoutADisplayThereIsNoWindow();
    void withoutAModelItIsNotReady();
    void withABrokenModelAndNoDesktopItSaysSo();
    void theDoctorFindsNoDisplay();
    void modelsAreListed();
    void aSelectionLasts();
    void theTimeToKeepAModelLasts();
    void itMakesItselfKnownToTheDesktop();
    void nothingIsWrittenOutsideTheUsersFolders();

private:
    struct Result
    {
        int status = -1;
        QString output;
        QString errors;
    };

    static bool foldersComeFromVariables() { return QSysInfo::kernelType() == u"linux"; }
    Result run(const QStringList &arguments) const;
    QString home(const QString &path) const { return m_home->filePath(path); }

    std::unique_ptr<QTemporaryDir> m_home = std::make_unique<QTemporaryDir>();
};

ProgramTest::Result ProgramTest::run(const QStringList &arguments) const
{
    QProcessEnvironment environment;
    environment.insert(u"HOME"_s, m_home->path());
    environment.insert(u"XDG_DATA_HOME"_s, home(u"data"_s));
    environment.insert(u"XDG_CONFIG_HOME"_s, home(u"config"_s));
    environment.insert(u"XDG_CACHE_HOME"_s, home(u"cache"_s));
    if (!foldersComeFromVariables())
        environment.insert(u"ORVANE_HOME"_s, home(u"data"_s));
    QProcess program;
    program.setProcessEnvironment(environment);
    program.setWorkingDirectory(m_home->path());
    program.start(QStringLiteral(ORVANE_PROGRAM), arguments);
    if (!program.waitForFinished() || program.exitStatus() != QProcess::NormalExit)
        return {};
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

void ProgramTest::helpIsPrinted_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("firstLine");
    QTest::newRow("general") << QStringList{u"--help"_s}
                             << u"Usage: orvane [--background | --toggle]\n       orvane do TASK\n"_s;
    QTest::newRow("do") << QStringList{u"do"_s, u"-h"_s} << u"Usage: orvane do TASK\n\n"_s;
    QTest::newRow("models") << QStringList{u"models"_s, u"--help"_s} << u"Usage: orvane models\n"_s;
    QTest::newRow("doctor") << QStringList{u"doctor"_s, u"--help"_s} << u"Usage: orvane doctor [--json]\n"_s;
    QTest::newRow("integrate") << QStringList{u"integrate"_s, u"--help"_s}
                               << u"Usage: orvane integrate [--remove]\n"_s;
}

void ProgramTest::helpIsPrinted()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, firstLine);
    const Result result = run(arguments);
    QCOMPARE(result.status, ExitStatus::done);
    QVERIFY2(result.output.startsWith(firstLine), qPrintable(result.output));
    QCOMPARE(result.errors, QString());
}

void ProgramTest::theVersionIsPrinted()
{
    const Result result = run({u"--version"_s});
    QCOMPARE(result.status, ExitStatus::done);
    QCOMPARE(result.output, QStringLiteral("orvane " ORVANE_VERSION "\n"));
}

void ProgramTest::wrongUseEndsWithSixtyFour_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    QTest::newRow("unknown command") << QStringList{u"dance"_s}
                                     << u"orvane: “dance” is no command. See: orvane --help\n"_s;
    QTest::newRow("blank task") << QStringList{u"do"_s, u"  "_s}
                                << u"orvane: There is no task to do. See: orvane do --help\n"_s;
    QTest::newRow("unknown model") << QStringList{u"models"_s, u"select"_s, u"x\x1b[2J"_s}
                                   << u"orvane: There is no model “x [2J”. See: orvane models\n"_s;
}

void ProgramTest::wrongUseEndsWithSixtyFour()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    const Result result = run(arguments);
    QCOMPARE(result.status, 64);
    QCOMPARE(result.output, QString());
    QCOMPARE(result.errors, error);
}

void ProgramTest::withoutADisplayThereIsNoWindow()
{
    if (QSysInfo::kernelType() != u"linux")
        QSKIP("A display cannot be hidden from the program here.");
    const Result result = run({});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output, QString());
    QCOMPARE(result.errors, u"orvane: There is no display to show a window on. In a terminal, give a task: "
                            "orvane do TASK\n"_s);
}

void ProgramTest::withoutAModelItIsNotReady()
{
    const Result result = run({u"do"_s, u"Open Safari"_s});
    QCOMPARE(result.status, 3);
    QCOMPARE(result.output, QString());
    QCOMPARE(result.errors, u"orvane: Qwen2.5 1.5B Instruct isn't on this machine yet.\n"
                            "orvane: Get it with: orvane models download\n"_s);
}

void ProgramTest::withABrokenModelAndNoDesktopItSaysSo()
{
    if (QSysInfo::kernelType() != u"linux")
        QSKIP("There is always a desktop here.");
    const QString folder = home(u"data/Orvane/Models"_s);
    QVERIFY(QDir().mkpath(folder));
    QFile model(folder + u'/' + LocalModel::catalog().constFirst().fileName);
    QVERIFY(model.open(QIODevice::WriteOnly));
    model.write("no model");
    model.close();
    const Result result = run({u"do"_s, u"Open Safari"_s});
    QVERIFY(model.remove());
    QCOMPARE(result.status, 1);
    QVERIFY2(result.errors.startsWith(u"orvane: "_s), qPrintable(result.errors));
    QCOMPARE(result.errors.count(u'\n'), 1);
}

void ProgramTest::theDoctorFindsNoDisplay()
{
    if (QSysInfo::kernelType() != u"linux")
        QSKIP("There is always a desktop here.");
    const Result result = run({u"doctor"_s});
    QCOMPARE(result.status, 4);
    QCOMPARE(result.errors, QString());
    QStringList marks;
    for (const QString &line : result.output.split(u'\n')) {
        if (!line.startsWith(u' ') && line.contains(u": "_s))
            marks << line.section(u':', 0, 0);
    }
    QCOMPARE(marks, QStringList({u"✗ Session"_s, u"✗ Model"_s, u"✓ llama.cpp"_s}));
    QVERIFY2(result.output.contains(u"There is no graphical desktop here."_s), qPrintable(result.output));
    QVERIFY(result.output.contains(u"    Get it with: orvane models download\n"_s));
}

void ProgramTest::modelsAreListed()
{
    const Result result = run({u"models"_s});
    QCOMPARE(result.status, ExitStatus::done);
    QVERIFY2(result.output.startsWith(u"* qwen2.5-1.5b  Qwen2.5 1.5B Instruct — Fast and light · ~1 GB — "
                                      "not downloaded\n  llama3.2-3b   "_s),
             qPrintable(result.output));
    QVERIFY(result.output.contains(home(u"data/Orvane/Models\n"_s)));
    QCOMPARE(result.errors, QString());
}

void ProgramTest::aSelectionLasts()
{
    QCOMPARE(run({u"models"_s, u"select"_s, u"llama3.2-3b"_s}).status, ExitStatus::done);
    QVERIFY(run({u"models"_s}).output.contains(u"* llama3.2-3b"_s));
    const Result notReady = run({u"do"_s, u"Open Safari"_s});
    QVERIFY(notReady.errors.startsWith(u"orvane: Llama 3.2 3B Instruct isn't on this machine yet."_s));
    QCOMPARE(run({u"models"_s, u"select"_s, u"qwen2.5-1.5b"_s}).status, ExitStatus::done);
    QVERIFY(run({u"models"_s}).output.contains(u"* qwen2.5-1.5b"_s));
}

void ProgramTest::theTimeToKeepAModelLasts()
{
    const QString always = u"An idle model stays in memory.\n"_s;
    const QString limited =
        u"A model that has been idle for 5 minutes is removed from memory until the next task.\n"_s;
    QCOMPARE(run({u"models"_s, u"keep"_s, u"always"_s}).output, always);
    QVERIFY(run({u"models"_s}).output.endsWith(always));
    QCOMPARE(run({u"models"_s, u"keep"_s, u"5"_s}).output, limited);
    QVERIFY(run({u"models"_s}).output.endsWith(limited));
}

void ProgramTest::itMakesItselfKnownToTheDesktop()
{
    if (!foldersComeFromVariables())
        QSKIP("Only Linux desktops know programs by their entries.");
    const QString path = home(u"data/applications/org.orvane.Orvane.desktop"_s);
    const Result written = run({u"integrate"_s});
    QCOMPARE(written.status, ExitStatus::done);
    QVERIFY2(written.output.contains(path), qPrintable(written.output + written.errors));
    QFile entry(path);
    QVERIFY(entry.open(QIODevice::ReadOnly));
    QVERIFY(entry.readAll().contains("\nExec=" ORVANE_PROGRAM "\n"));
    QCOMPARE(run({u"integrate"_s, u"--remove"_s}).status, ExitStatus::done);
    QVERIFY(!QFile::exists(path));
    QCOMPARE(run({u"integrate"_s, u"--remove"_s}).output, u"There is nothing to remove.\n"_s);
}

void ProgramTest::nothingIsWrittenOutsideTheUsersFolders()
{
    m_home = std::make_unique<QTemporaryDir>();
    QCOMPARE(run({u"models"_s, u"select"_s, u"llama3.2-3b"_s}).status, ExitStatus::done);
    QStringList written;
    QDirIterator all(m_home->path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (all.hasNext())
        written.append(QDir(m_home->path()).relativeFilePath(all.next()));
    const QString settings =
        foldersComeFromVariables() ? u"config/Orvane/Orvane.conf"_s : u"data/Orvane/Orvane.conf"_s;
    QCOMPARE(written, QStringList{settings});
}

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
