// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"
#include "Desktop/Linux/Diagnosis/X11Examination.h"
#include "Desktop/Linux/Session/SessionType.h"

// What the X server's answers mean to a user. Pure functions, any thread.
namespace DisplayChecks {

struct Session
{
    QString display; // as $DISPLAY names it
    SessionType type = SessionType::None;
};

enum class Server { Answers, Unreachable, Silent };

DiagnosticCheck session(const Session &session, Server server);
DiagnosticCheck windowManager(const X11Examination &examination);
DiagnosticCheck keyboard(const X11Examination &examination);
DiagnosticCheck spareKeys(const X11Examination &examination);

enum class Orvane { Runs, DoesNotRun }; // as the window, which takes the key
DiagnosticCheck hotKey(const X11Examination &examination, Orvane orvane);

DiagnosticCheck screenshot(const X11Examination &examination);

} // namespace DisplayChecks
