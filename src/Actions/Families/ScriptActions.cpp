// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/ScriptActions.h"

#include "Actions/Arguments.h"
#include "Actions/Operations/AppleScript.h"

using namespace Qt::StringLiterals;

QCoro::Task<QString> ScriptActions::appleScript(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString source = Arguments::required(action, u"script"_s, u"script"_s);
    co_return co_await Executor::appleScript(source, desktop);
}
