// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"
#include "Desktop/Linux/Applications/DesktopEntry.h"
#include "Desktop/Linux/Diagnosis/BusExamination.h"

#include <optional>

// What the answers of the desktop's services mean to a user. Pure functions, any thread.
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

// The user's choice, where the registry of applications answers.
struct DefaultApplication
{
    bool isKnown = false;
    std::optional<DesktopEntry> entry = {};
};
DiagnosticCheck browser(const DefaultApplication &application);
DiagnosticCheck fileManager(const DefaultApplication &application);

// `sessionBus` is absent where there is none that answers.
DiagnosticCheck showFiles(const std::optional<BusExamination> &sessionBus);

// The names of the applications that run, by what they let the accessibility bus see.
struct Applications
{
    qsizetype shown = 0;
    QStringList hidden = {};
    QStringList silent = {};
};
DiagnosticCheck applications(const std::optional<Applications> &applications);

} // namespace ServiceChecks
