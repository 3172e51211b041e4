// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/SampleScripts.h"

#include "Desktop/Linux/Scripting/LinuxScripting.h"
#include "Support/Awaited.h"

using namespace Qt::StringLiterals;

QString SampleScripts::run(const QString &source)
{
    SampleClipboard clipboard;
    return run(source, clipboard);
}

QString SampleScripts::run(const QString &source, SampleClipboard &clipboard)
{
    LinuxScripting scripting(clipboard);
    NoApplications host;
    const ScriptOutcome outcome = Awaited::result(scripting.run(source, host));
    const QString text = outcome.text.value_or(u"none"_s);
    return outcome.ending == ScriptOutcome::Ending::Failed ? u"Error: "_s + text : text;
}
