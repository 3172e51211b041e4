// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine.h"
#include "OrvaneApp/CommandRunner.h"
#include "OrvaneApp/ExitStatus.h"
#include "OrvaneApp/Terminal.h"

#include <QCoreApplication>
#include <QFile>

#include <unistd.h>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVANE_VERSION));

    QFile output;
    QFile errors;
    // Straight to the descriptors: a question without a line break is there at once, and the two outputs keep
    // their order.
    if (!output.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        !errors.open(STDERR_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return ExitStatus::endedOtherwise;
    Terminal terminal(output, errors, TerminalTraits::ofStandardOutput());

    const auto parsed = CommandLine::parse(application.arguments().sliced(1));
    if (const auto *wrongUse = std::get_if<CommandLine::WrongUse>(&parsed)) {
        terminal.error(wrongUse->message);
        return ExitStatus::wrongUse;
    }
    return CommandRunner::run(std::get<CommandLine>(parsed), terminal);
}
