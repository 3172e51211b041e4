// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionKind.h"
#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>
#include <QStringView>

// Everything the program has to say about one kind of action but how risky it is (see Safety). Each family of
// actions defines its own, in Families.
struct ActionDefinition
{
    // Whether the action works on whatever application is frontmost when it is carried out, so that the focus
    // has to be where it was when the action was chosen.
    enum class Focus {
        NotNeeded,
        Needed,
        NeededUnlessAppIsNamed, // by its argument "app", which then comes to the front itself
    };

    // What the session must allow for the action to work.
    enum class Reach {
        WholeSession, // its windows, keys or screen, if only to see what came of the action
        FilesAlone,
    };

    // What the user sees of the action. Any thread.
    using Title = QString (*)(const AgentAction &action);

    // Carries the action out on its target and gives the result line; see Executor::run. Main thread.
    using Handler = QCoro::Task<QString> (*)(AgentAction action, ActionTarget target, Desktop desktop);

    QStringView name; // as the model writes it
    Title title = nullptr;
    Handler run = nullptr; // null: not carried out on the desktop
    Focus focus = Focus::NotNeeded;
    Reach reach = Reach::WholeSession;

    // Any thread.
    bool needsFocus(const AgentAction &action) const;
};

// Any thread.
const ActionDefinition &definitionOf(ActionKind kind);

// Nothing for an action of a name that the program does not know. Any thread.
const ActionDefinition *definitionOf(const AgentAction &action);
