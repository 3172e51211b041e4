// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"

#include <array>
#include <cstddef>
#include <optional>

// The kinds of actions. A `switch` over them has no `default`, so that a missing kind fails to compile.
enum class ActionKind {
    OpenApp,
    FocusApp, // alias of OpenApp, not in the prompt
    QuitApp,
    OpenUrl,
    WebSearch,
    NewTab,
    TypeText,
    PressKey,
    Click,
    CreateFolder,
    Screenshot,
    FindFiles,
    OpenPath,
    Trash,
    ListWindows,
    ReadUi,
    AppleScript,
    Done, // ends the task; handled by the agent loop. Must be last
};

// All kinds, in enum order.
inline constexpr auto allActionKinds = [] {
    std::array<ActionKind, static_cast<std::size_t>(ActionKind::Done) + 1> kinds{};
    for (std::size_t i = 0; i < kinds.size(); ++i)
        kinds[i] = static_cast<ActionKind>(i);
    return kinds;
}();

// Returns nothing for an unknown name. Any thread.
std::optional<ActionKind> kindOf(const AgentAction &action);
