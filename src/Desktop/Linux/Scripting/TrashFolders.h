// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Scripting/ScriptHost.h"

// Carries out `empty trash`: deletes what is in the user's trash folders, in the home folder and on other
// volumes, as freedesktop.org's trash specification describes them. Thread: main.
class TrashFolders : public ScriptHost
{
public:
    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command) override;

private:
    BoundedQueue m_worker{QStringLiteral("desktop.trash"), QStringLiteral("The trash")};
};
