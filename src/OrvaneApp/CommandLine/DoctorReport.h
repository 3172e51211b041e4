// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"
#include "OrvaneApp/CommandLine/Terminal.h"

// Prints the checks of `orvane doctor` and derives the exit status.
namespace DoctorReport {

enum class Format { Text, Json };

void write(const QList<DiagnosticCheck> &checks, Format format, Terminal &terminal);

// `done`; `notReady` if only the model is missing; `desktopUnfit` if any other check that actions need fails.
int exitStatus(const QList<DiagnosticCheck> &checks);

} // namespace DoctorReport
