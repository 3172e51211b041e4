// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

#include <exception>
#include <memory>
#include <optional>

// The objects that an action affects, found before the policy judges it, so that the action affects exactly
// what was judged even if applications start, end or come to the front in between. Members are empty if
// irrelevant to the action or not found. Thread: main.
struct ActionTarget
{
    // A control of the frontmost application. `label` is its own label; the action may contain only part of
    // it.
    struct Control
    {
        std::shared_ptr<AccessibilityTree> tree;
        AccessibilityElement element = 0;
        QString label;
    };

    std::optional<RunningApplication> frontmost; // receives the keys or has the control
    std::optional<RunningApplication> quitting;  // to be asked to quit
    std::optional<Control> control;              // to be pressed
    std::exception_ptr failure;                  // why the search was incomplete

    // Finds the action's target without side effects. Never throws; stores a failure for the action to
    // report.
    static QCoro::Task<ActionTarget> find(AgentAction action, Desktop desktop);

    // Finds the target again after the user's approval: returns the focus to the application that was
    // frontmost and searches for the control again. Throws ActionError if the application has ended, or if
    // the control found is neither the judged one nor has exactly the label in the action.
    static QCoro::Task<ActionTarget> findApproved(AgentAction action, ActionTarget judged, Desktop desktop);

    // Throws the failure, if there is one.
    void requireFound() const
    {
        if (failure)
            std::rethrow_exception(failure);
    }
};
