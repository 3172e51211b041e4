// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"

// Checks the X server, the session bus, the accessibility bus and the application registry, over private
// connections. Calls that may hang run on threads that can be abandoned. Thread: main.
class LinuxDiagnosis : public Diagnosis
{
public:
    QCoro::Task<QList<DiagnosticCheck>> examine() override;
};
