// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"
#include "OrvaneApp/CommandLine/Terminal.h"

// What `orvane doctor` makes of its checks. Pure but for the writing.
namespace DoctorReport {

enum class Format { Text, Json };

void write(const QList<DiagnosticCheck> &checks, Format format, Terminal &terminal);

// Done; or notReady when only the model is missing, and desktopUnfit when anything else is that actions need.
int exitStatus(const QList<DiagnosticCheck> &checks);

} // namespace DoctorReport
