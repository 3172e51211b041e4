// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Scripting.h"

// Runs AppleScript in this process. The platform permits it only on the main thread, so the interface blocks
// until the script, including its dialogs, has ended. The platform carries out everything itself.
class MacScripting : public Scripting
{
public:
    QCoro::Task<ScriptOutcome> run(QString source, ScriptHost &host) override;
    void interrupt() override {}
};
