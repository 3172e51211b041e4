// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine.h"
#include "OrvaneApp/CommandRunner.h"
#include "OrvaneApp/ExitStatus.h"
#include "OrvaneApp/Terminal.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVANE_VERSION));

    QFile output;
    QFile errors;
    // Unbuffered: a line is there when it is written, and the two do not overtake each other.
    if (!output.open(stdout, QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        !errors.open(stderr, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return ExitStatus::endedOtherwise;
    Terminal terminal(output, errors, TerminalTraits::ofStandardOutput());

    const auto parsed = CommandLine::parse(application.arguments().sliced(1));
    if (const auto *wrongUse = std::get_if<CommandLine::WrongUse>(&parsed)) {
        terminal.error(wrongUse->message);
        return ExitStatus::wrongUse;
    }
    return CommandRunner::run(std::get<CommandLine>(parsed), terminal);
}
