// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Scripting.h"

// AppleScript inside our own process. The platform allows it on the main thread only, so the interface stands
// still until the script, and whatever the user is asked for it, has ended.
class MacScripting : public Scripting
{
public:
    QCoro::Task<ScriptOutcome> run(QString source) override;
};
