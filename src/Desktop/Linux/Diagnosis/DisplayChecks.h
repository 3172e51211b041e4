// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"
#include "Desktop/Linux/Diagnosis/X11Examination.h"
#include "Desktop/Linux/Session/SessionType.h"
#include "Desktop/Linux/ShellExtension/ExtensionStanding.h"

// Turns what was found out about the display into check results. Pure functions.
namespace DisplayChecks {

struct Session
{
    QString display; // the value of $DISPLAY
    SessionType type = SessionType::None;
    // On Wayland, whether the desktop offers everything that actions need.
    enum class Access {
        None,
        NeedsExtension, // our extension of GNOME Shell would
        NeedsEntry,     // it would if it knew the program by a desktop entry
        Full,
    };
    Access access = Access::None;
    ExtensionStanding extension = ExtensionStanding::IsMissing;
};

// The X server.
enum class Server { Answers, Unreachable, Silent };

DiagnosticCheck session(const Session &session, Server server);
DiagnosticCheck windowManager(const X11Examination &examination);
DiagnosticCheck keyboard(const X11Examination &examination);
DiagnosticCheck spareKeys(const X11Examination &examination);

enum class Orvane { Runs, DoesNotRun }; // whether the program's window, which grabs the hot key, is running
DiagnosticCheck hotKey(const X11Examination &examination, Orvane orvane);

DiagnosticCheck screenshot(const X11Examination &examination);

} // namespace DisplayChecks
