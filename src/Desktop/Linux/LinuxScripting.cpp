// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxScripting.h"

QCoro::Task<ScriptOutcome> LinuxScripting::run(QString)
{
    ScriptOutcome outcome;
    outcome.error = std::optional(QStringLiteral("AppleScript is not available on this computer."));
    co_return outcome;
}
