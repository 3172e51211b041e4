// SPDX-License-Identifier: Apache-2.0
#include "applications/support/OrvaneProgram.h"

#include "applications/support/Doctor.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int taskLimitMilliseconds = 120'000;
constexpr int runLimitMilliseconds = 20'000; // below D-Bus's default timeout

QString quoted(QString text)
{
    return u'\'' + text.replace(u"'"_s, u"'\\''"_s) + u'\'';
}

// The output without control sequences and progress lines, which are overwritten.
QString lastingLines(QString said)
{
    static const QRegularExpression controlSequence(u"\\x1b\\[[0-9;?]*[A-Za-z]"_s);
    static const QRegularExpression lineEnd(u"[\\r\\n]+"_s);
    static const QRegularExpression spinner(u"^[\\x{2800}-\\x{28FF}]"_s);
    QStringList lines = said.remove(controlSequence).split(lineEnd, Qt::SkipEmptyParts);
    lines.removeIf([](const QString &line) { return line.contains(spinner); });
    return lines.join(u'\n');
}

} // namespace

QString OrvaneProgram::path()
{
    return QString::fromUtf8(ORVANE_PROGRAM);
}

void OrvaneProgram::installPracticeModel()
{
    const QString folder = PrivateDesktop::home(u".local/share/Orvane/Models"_s);
    QDir().mkpath(folder);
    const QString model = folder + u"/qwen2.5-1.5b-instruct-q4_k_m.gguf"_s;
    if (!QFile::exists(model) && !QFile::copy(QString::fromUtf8(ORVANE_PRACTICE_MODEL), model))
        qFatal("the practice model cannot be put in its place");
}

bool OrvaneProgram::introduce()
{
    if (Screen::session() != Screen::Session::Plasma)
        return true;
    const auto isKnown = [] { return Doctor::consult().state(u"session"_s) == "works"_L1; };
    return run({u"integrate"_s}).status == 0 && QTest::qWaitFor(isKnown, PrivateDesktop::patience);
}

OrvaneProgram::Ending OrvaneProgram::run(const QStringList &arguments, const QProcessEnvironment &environment)
{
    QProcess program;
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(path(), arguments);
    const bool hasEnded = program.waitForFinished(runLimitMilliseconds);
    if (!hasEnded) {
        program.kill();
        program.waitForFinished();
    }
    const bool isRegular = hasEnded && program.exitStatus() == QProcess::NormalExit;
    return {isRegular ? program.exitCode() : -1, QString::fromUtf8(program.readAll())};
}

QString OrvaneProgram::carryOut(const QString &task)
{
    // The program prompts only on a terminal; script(1) provides one.
    QProcess terminal;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"TERM"_s, u"xterm"_s);
    terminal.setProcessEnvironment(environment);
    terminal.setProcessChannelMode(QProcess::MergedChannels);
    terminal.start(u"script"_s, {u"--quiet"_s, u"--return"_s, u"--command"_s,
                                 quoted(path()) + u" do "_s + quoted(task), u"/dev/null"_s});
    QByteArray said;
    qsizetype questions = 0;
    const auto hasEnded = [&] {
        said += terminal.readAll();
        if (const qsizetype asked = said.count("(y/n)"); asked > questions) {
            questions = asked;
            terminal.write("y\n");
        }
        return terminal.state() == QProcess::NotRunning;
    };
    if (!QTest::qWaitFor(hasEnded, taskLimitMilliseconds)) {
        terminal.kill();
        terminal.waitForFinished();
    }
    return lastingLines(QString::fromUtf8(said + terminal.readAll()));
}
