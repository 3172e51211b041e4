// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"

#include <optional>

// Everything that the model can ask for. What differs from kind to kind is told by a `switch` without a
// default, so that a new kind does not compile until each of them knows it.
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
    Done, // ends the task; the agent loop's business
};

// Nothing for a name that the program does not know. Any thread.
std::optional<ActionKind> kindOf(const AgentAction &action);
