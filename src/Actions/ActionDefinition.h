// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionKind.h"
#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>
#include <QStringView>

// The definition of one kind of action, except its risk (see Safety). `Families` contains the definitions.
struct ActionDefinition
{
    // Whether the action works on the frontmost application, so that the application that was frontmost when
    // the action was chosen must be frontmost again.
    enum class Focus {
        NotNeeded,
        Needed,
        NeededUnlessAppIsNamed, // in the argument "app"; that application is then brought to the front
    };

    // What the session must permit.
    enum class Reach {
        WholeSession, // its windows, keys or screen, at least to observe the action's effect
        FilesAlone,
    };

    // The title shown to the user. Any thread.
    using Title = QString (*)(const AgentAction &action);

    // Performs the action on its target and returns the result line; see Executor::run. Thread: main.
    using Handler = QCoro::Task<QString> (*)(AgentAction action, ActionTarget target, Desktop desktop);

    QStringView name; // as the model writes it
    Title title = nullptr;
    Handler run = nullptr; // null if the desktop is not involved
    Focus focus = Focus::NotNeeded;
    Reach reach = Reach::WholeSession;

    // Any thread.
    bool needsFocus(const AgentAction &action) const;
};

// Any thread.
const ActionDefinition &definitionOf(ActionKind kind);

// Returns null for an unknown name. Any thread.
const ActionDefinition *definitionOf(const AgentAction &action);
