// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxScripting.h"

using namespace Qt::StringLiterals;

QCoro::Task<ScriptOutcome> LinuxScripting::run(QString)
{
    ScriptOutcome outcome;
    outcome.error = std::optional(u"AppleScript is not available on this computer."_s);
    co_return outcome;
}
