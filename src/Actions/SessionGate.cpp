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
    // What is done to files shows on the disk. The effect of any other action shows in the windows only, and
    // would be taken for granted where these are out of reach.
    const ActionDefinition *definition = definitionOf(action);
    const bool isWithFilesAlone = definition && definition->reach == ActionDefinition::Reach::FilesAlone;
    const std::optional<QString> obstacle = desktop.session.obstacle();
    if (obstacle && !isWithFilesAlone)
        throw ActionError(*obstacle);
}
