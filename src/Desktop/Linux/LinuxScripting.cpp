// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxScripting.h"

using namespace Qt::StringLiterals;

QCoro::Task<ScriptOutcome> LinuxScripting::run(QString)
{
    co_return ScriptOutcome{ScriptOutcome::Ending::Failed,
                            u"AppleScript is not available on this computer."_s};
}
