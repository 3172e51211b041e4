// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/ScriptActions.h"

#include "Actions/Arguments.h"
#include "Actions/Operations/AppleScript.h"

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<QString> runAppleScript(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString source = Arguments::required(action, u"script"_s, u"script"_s);
    co_return co_await appleScript(source, desktop);
}

QString appleScriptTitle(const AgentAction &)
{
    return u"Running AppleScript"_s;
}

} // namespace

constinit const ActionDefinition ScriptActions::appleScript{
    .name = u"applescript",
    .title = &appleScriptTitle,
    .run = &runAppleScript,
};
