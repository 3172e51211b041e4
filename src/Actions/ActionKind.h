// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"

#include <array>
#include <cstddef>
#include <optional>

// Everything that the model can ask for. A `switch` over the kinds has no default, so that a kind that was
// forgotten does not compile.
enum class ActionKind {
    OpenApp,
    FocusApp, // a second name of OpenApp, which the model is not told
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
    Done, // ends the task; the agent loop's business. The last kind
};

// Every kind once, in the order of the enumeration.
inline constexpr auto allActionKinds = [] {
    std::array<ActionKind, static_cast<std::size_t>(ActionKind::Done) + 1> kinds{};
    for (std::size_t i = 0; i < kinds.size(); ++i)
        kinds[i] = static_cast<ActionKind>(i);
    return kinds;
}();

// Nothing for a name that the program does not know. Any thread.
std::optional<ActionKind> kindOf(const AgentAction &action);
