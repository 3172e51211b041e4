// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Scripting.h"

// AppleScript doesn't exist on Linux: every script fails with a message that says so.
class LinuxScripting : public Scripting
{
public:
    QCoro::Task<ScriptOutcome> run(QString source) override;
};
