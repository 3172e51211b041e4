// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Diagnosis/ServiceChecks.h"
#include "Desktop/Workspace.h"

#include <QCoroTask>

// How the accessibility bus stands, and what the applications show of themselves there. A plain value.
struct AccessibilityExamination
{
    ServiceChecks::Accessibility standing = ServiceChecks::Accessibility::Works;
    // Absent while the bus does not work.
    std::optional<ServiceChecks::Applications> applications = {};

    // `sessionBus` is absent where there is none that answers; `address` is that of the accessibility bus,
    // empty while it does not run. Starts neither. Throws nothing. Main thread.
    static QCoro::Task<AccessibilityExamination> take(std::optional<BusExamination> sessionBus,
                                                      QString address, QList<RunningApplication> running);
};
