// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"
#include "Desktop/Linux/Applications/DesktopEntry.h"
#include "Desktop/Linux/Diagnosis/BusExamination.h"

#include <optional>

// Turns what was found out about the desktop's services into check results. Pure functions.
namespace ServiceChecks {

enum class Accessibility {
    NoSessionBus,
    NotInstalled,
    NotRunning,
    Silent,
    Off,
    Works,
};
DiagnosticCheck accessibility(Accessibility standing);

// The default application; `isKnown` is false if the application registry didn't respond.
struct DefaultApplication
{
    bool isKnown = false;
    std::optional<DesktopEntry> entry = {};
};
DiagnosticCheck browser(const DefaultApplication &application);
DiagnosticCheck fileManager(const DefaultApplication &application);

// `sessionBus` is nothing if no session bus responds.
DiagnosticCheck showFiles(const std::optional<BusExamination> &sessionBus);

// The running applications (a count, or their names) by what they expose on the accessibility bus.
struct Applications
{
    qsizetype shown = 0;
    QStringList hidden = {};
    QStringList silent = {};
};
DiagnosticCheck applications(const std::optional<Applications> &applications);

} // namespace ServiceChecks
