// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"

// Examines a Linux desktop: the X server, the session bus, the accessibility bus and the registry of
// applications, over connections of its own. Main thread, which waits for none of them: what might get stuck
// happens on threads that can be left behind.
class LinuxDiagnosis : public Diagnosis
{
public:
    QCoro::Task<QList<DiagnosticCheck>> examine() override;
};
