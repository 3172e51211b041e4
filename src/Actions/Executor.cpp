// SPDX-License-Identifier: Apache-2.0
#include "Actions/Executor.h"

#include "Actions/ActionDefinition.h"
#include "Actions/ActionError.h"
#include "Actions/SessionGate.h"
#include "Base/Text.h"

using namespace Qt::StringLiterals;

QCoro::Task<QString> Executor::run(AgentAction action, Desktop desktop)
{
    const ActionTarget target = co_await ActionTarget::find(action, desktop);
    co_return co_await run(action, target, desktop);
}

QCoro::Task<QString> Executor::run(AgentAction action, ActionTarget target, Desktop desktop)
{
    const ActionDefinition *definition = definitionOf(action);
    if (!definition || !definition->run)
        throw ActionError(u"Unknown action “%1”."_s.arg(action.name));
    co_await SessionGate::requireSessionFor(action, desktop);
    const QString line = co_await definition->run(action, target, desktop);
    // Paths, file names and the model's words may contain any characters.
    co_return Text::cleaned(line);
}
