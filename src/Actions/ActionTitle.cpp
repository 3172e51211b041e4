// SPDX-License-Identifier: Apache-2.0
#include "Actions/ActionDefinition.h"
#include "Base/Text.h"

QString AgentAction::title() const
{
    const ActionDefinition *definition = definitionOf(*this);
    if (definition && definition->title)
        return definition->title(*this);
    return Text::capitalized(QString(name).replace(u'_', u' '));
}
