// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Scripting/ScriptHost.h"

// Carries out scripts on the desktop, with the same operations and rules as the other actions. Thread: main.
class DesktopScriptHost : public ScriptHost
{
public:
    explicit DesktopScriptHost(const Desktop &desktop) : m_desktop(desktop) {}

    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command) override;

private:
    Desktop m_desktop;
};
