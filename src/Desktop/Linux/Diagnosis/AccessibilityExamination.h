// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Diagnosis/ServiceChecks.h"
#include "Desktop/Workspace.h"

#include <QCoroTask>

// The state of the accessibility bus, and what the applications expose on it. A plain value.
struct AccessibilityExamination
{
    ServiceChecks::Accessibility standing = ServiceChecks::Accessibility::Works;
    // Nothing unless the bus works.
    std::optional<ServiceChecks::Applications> applications = {};

    // `sessionBus` is nothing if no session bus responds; `address` is the accessibility bus's, empty if it
    // isn't running. Starts neither. Never throws. Thread: main.
    static QCoro::Task<AccessibilityExamination> take(std::optional<BusExamination> sessionBus,
                                                      QString address, QList<RunningApplication> running);
};
