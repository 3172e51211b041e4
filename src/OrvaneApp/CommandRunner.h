// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/ProgramInstance.h"
#include "OrvaneApp/CommandLine/CommandLine.h"
#include "OrvaneApp/CommandLine/Terminal.h"

// Composes the program for one command and carries the command out: here, and nowhere below, the engine, the
// download session and the desktop are chosen. Main thread, with an application object that does not run yet;
// a QGuiApplication and an instance for the window.
namespace CommandRunner {

// Returns the exit status when the command has ended and everything made for it is gone.
int run(const CommandLine &commandLine, ProgramInstance *instance, Terminal &terminal);

} // namespace CommandRunner
