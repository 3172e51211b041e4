// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/Scripts/MailDrafts.h"
#include "Desktop/Desktop.h"
#include "Scripting/ScriptHost.h"

// Carries out a script on the desktop, with the same operations and rules as the other actions. One object
// per script. Thread: main.
class DesktopScriptHost : public ScriptHost
{
public:
    explicit DesktopScriptHost(const Desktop &desktop) : m_desktop(desktop) {}

    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command) override;

    // Call it after a script that has succeeded: opens the messages that it has composed. Throws ActionError
    // or PlatformError.
    QCoro::Task<void> finish();

private:
    Desktop m_desktop;
    MailDrafts m_drafts;
};
