// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Scripting.h"

// This platform has no such scripts: each fails with a sentence that says so, and nothing runs.
class LinuxScripting : public Scripting
{
public:
    QCoro::Task<ScriptOutcome> run(QString source) override;
};
