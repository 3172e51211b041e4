// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

#include <exception>
#include <memory>
#include <optional>

// What an action acts upon, found before the policy judges the action: so what was judged is what is done,
// whatever starts, ends or comes to the front in the meantime. Empty where the action acts on nothing of the
// kind, or nothing was found. Main thread.
struct ActionTarget
{
    // A control of the frontmost application. `label` is its own, of which the action may name a part only.
    struct Control
    {
        std::shared_ptr<AccessibilityTree> tree;
        AccessibilityElement element = 0;
        QString label;
    };

    std::optional<RunningApplication> frontmost; // gets the keys, or has the control
    std::optional<RunningApplication> quitting;  // is asked to quit
    std::optional<Control> control;              // is pressed
    std::exception_ptr failure;                  // why not everything could be looked for

    // Looks for the action's target without changing anything. Never throws; a failure is the action's own.
    static QCoro::Task<ActionTarget> find(AgentAction action, Desktop desktop);

    // Looks for the target once more, after the user has taken the time to approve the action: gives the
    // focus back to the application that was in front, and looks for the control again. Throws ActionError
    // when either has gone, or the control is neither the one that was judged nor called what the action
    // calls it.
    static QCoro::Task<ActionTarget> findApproved(AgentAction action, ActionTarget judged, Desktop desktop);

    // Throws the failure, if there is one.
    void requireFound() const
    {
        if (failure)
            std::rethrow_exception(failure);
    }
};
