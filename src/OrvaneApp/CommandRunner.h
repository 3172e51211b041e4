// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/ProgramInstance.h"
#include "OrvaneApp/CommandLine/CommandLine.h"
#include "OrvaneApp/CommandLine/Terminal.h"

// Composes the program for one command and runs it: the only place that chooses the engine, the download
// session and the desktop. Thread: main, with an application object whose event loop has not started; the
// window needs a QGuiApplication and `instance`.
namespace CommandRunner {

// Returns the exit status after destroying everything created for the command.
int run(const CommandLine &commandLine, ProgramInstance *instance, Terminal &terminal);

} // namespace CommandRunner
