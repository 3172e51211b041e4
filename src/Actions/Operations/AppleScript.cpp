// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/AppleScript.h"

#include "Actions/ActionError.h"
#include "Actions/Scripts/DesktopScriptHost.h"

using namespace Qt::StringLiterals;

QCoro::Task<QString> appleScript(QString source, Desktop desktop)
{
    DesktopScriptHost host(desktop);
    const ScriptOutcome outcome = co_await desktop.scripting.run(source, host);
    if (outcome.ending == ScriptOutcome::Ending::Failed)
        throw ActionError(u"AppleScript error: "_s + outcome.text.value_or(u"unknown"_s));
    try {
        co_await host.finish();
    } catch (const LocalizedError &error) {
        throw ActionError(u"AppleScript error: "_s + error.errorDescription());
    }
    if (outcome.text)
        co_return u"Script returned: "_s + *outcome.text;
    co_return u"Script ran."_s;
}
