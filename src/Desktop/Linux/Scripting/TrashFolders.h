// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Scripting/ScriptHost.h"

#include <QStringList>

#include <functional>

// Carries out `empty trash`: deletes what is in the user's trash folders, in the home folder and on other
// volumes, as freedesktop.org's trash specification describes them. Thread: main.
class TrashFolders : public ScriptHost
{
public:
    // Returns the roots of the volumes whose trash is emptied, too. Called in another thread.
    using Volumes = std::function<QStringList()>;

    explicit TrashFolders(Volumes volumes = &writableVolumes) : m_volumes(std::move(volumes)) {}

    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command) override;

private:
    static QStringList writableVolumes();

    Volumes m_volumes;
    BoundedQueue m_worker{QStringLiteral("desktop.trash"), QStringLiteral("The trash")};
};
