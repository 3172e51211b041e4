// SPDX-License-Identifier: Apache-2.0
#include "Actions/SessionGate.h"

#include "Actions/ActionDefinition.h"
#include "Actions/ActionError.h"

using namespace Qt::StringLiterals;

QCoro::Task<void> SessionGate::requireUnlocked(Desktop desktop)
{
    const bool isLocked = co_await desktop.session.isLocked();
    if (isLocked)
        throw ActionError(u"The screen is locked."_s);
}

QCoro::Task<void> SessionGate::requireSessionFor(AgentAction action, Desktop desktop)
{
    co_await requireUnlocked(desktop);
    // Effects on files are visible on the disk. Any other action's effect is visible only in windows; if
    // these are inaccessible, the model would assume success.
    const ActionDefinition *definition = definitionOf(action);
    const bool isWithFilesAlone = definition && definition->reach == ActionDefinition::Reach::FilesAlone;
    const std::optional<QString> obstacle = desktop.session.obstacle();
    if (obstacle && !isWithFilesAlone)
        throw ActionError(*obstacle);
}
