// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"

// Examines what macOS lets this process do. Asks for no permission: the system would put the question to the
// user. Main thread.
class MacDiagnosis : public Diagnosis
{
public:
    QCoro::Task<QList<DiagnosticCheck>> examine() override;
};
