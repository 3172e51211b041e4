// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "OrvaneApp/CommandLine.h"
#include "OrvaneApp/Terminal.h"

// Composes the program for one command and carries the command out: here, and nowhere below, the engine, the
// download session and the desktop are chosen. Main thread, with a QCoreApplication that does not run yet.
namespace CommandRunner {

// Returns the exit status when the command has ended and everything made for it is gone.
int run(const CommandLine &commandLine, Terminal &terminal);

} // namespace CommandRunner
