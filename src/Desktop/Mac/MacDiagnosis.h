// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"

// Checks what macOS permits this process to do. Requests no permission, since the system would prompt the
// user. Thread: main.
class MacDiagnosis : public Diagnosis
{
public:
    QCoro::Task<QList<DiagnosticCheck>> examine() override;
};
