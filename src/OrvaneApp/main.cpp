// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/LlamaLibrary.h"
#include "OrvaneApp/CommandLine/CommandLine.h"
#include "OrvaneApp/CommandLine/ExitStatus.h"
#include "OrvaneApp/CommandLine/Terminal.h"
#include "OrvaneApp/CommandRunner.h"
#include "OrvaneApp/Platform.h"

#include <QFile>
#include <QGuiApplication>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QStringList argumentsOf(int argc, char *argv[])
{
    QStringList result;
    for (int i = 1; i < argc; ++i)
        result.append(QString::fromLocal8Bit(argv[i]));
    return result;
}

void nameTheProgram()
{
    QCoreApplication::setApplicationName(u"Orvane"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVANE_VERSION));
    QGuiApplication::setDesktopFileName(u"org.orvane.Orvane"_s);
}

// Qt aborts without a display; print a sentence instead.
int runWindow(const CommandLine &commandLine, int argc, char *argv[], Terminal &terminal)
{
    if (!Platform::prepareDisplay()) {
        terminal.error(Platform::sessionObstacle().value_or(
            u"There is no display to show a window on. In a terminal, give a task: orvane do TASK"_s));
        return ExitStatus::endedOtherwise;
    }
    const std::unique_ptr<ProgramInstance> instance = Platform::programInstance();
    const QGuiApplication application(argc, argv);
    return CommandRunner::run(commandLine, instance.get(), terminal);
}

int runInTerminal(const CommandLine &commandLine, int argc, char *argv[], Terminal &terminal)
{
    const QCoreApplication application(argc, argv);
    return CommandRunner::run(commandLine, nullptr, terminal);
}

} // namespace

int main(int argc, char *argv[])
{
    LlamaLibrary::prepareEnvironment();
    Platform::prepareProcess();
    nameTheProgram();
    QFile output;
    QFile errors;
    // Unbuffered: a question without a line break appears at once, and the two outputs keep their order.
    if (!output.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        !errors.open(STDERR_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return ExitStatus::endedOtherwise;
    Terminal terminal(output, errors, TerminalTraits::ofStandardOutput());

    const auto parsed = CommandLine::parse(argumentsOf(argc, argv));
    if (const auto *wrongUse = std::get_if<CommandLine::WrongUse>(&parsed)) {
        terminal.error(wrongUse->message);
        return ExitStatus::wrongUse;
    }
    const auto &commandLine = std::get<CommandLine>(parsed);
    const bool isWindow = commandLine.command == CommandLine::Command::Window;
    return isWindow ? runWindow(commandLine, argc, argv, terminal)
                    : runInTerminal(commandLine, argc, argv, terminal);
}
