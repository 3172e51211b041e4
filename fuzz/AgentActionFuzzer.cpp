// SPDX-License-Identifier: Apache-2.0
// Any model reply can be parsed, and its title is one line.
#include "Fuzzing.h"

#include "Actions/AgentAction.h"
#include "Base/Text.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::optional<AgentAction> action = AgentAction::parse(textOf(data, size));
    if (!action)
        return 0;
    require(!action->id.isNull());
    require(action->name == action->name.toLower());
    require(isOneLine(Text::withVisibleMarks(action->title())));
    for (auto argument = action->args.begin(); argument != action->args.end(); ++argument) {
        const std::optional<QString> value = action->arg(argument.key());
        require(!value || (!value->isEmpty() && *value == value->trimmed()));
    }
    return 0;
}
