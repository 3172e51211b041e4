// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QSet>
#include <QString>

#include <optional>

// The policy's verdict on an action: run it now, or confirm it with the user first.
struct Risk
{
    enum class Kind { Safe, Confirm };

    static Risk safe() { return {}; }
    static Risk confirm(const QString &reason) { return {Kind::Confirm, reason}; }

    Kind kind = Kind::Safe;
    // For Confirm: the question for the user. Quotes the arguments unchanged; a script follows its heading on
    // lines of its own.
    QString reason;

    friend bool operator==(const Risk &, const Risk &) = default;
};

// The fixed policy that every action passes before it runs. Stateless; never throws.
namespace Safety {

// The comparison keys of the applications that may be quit without confirmation. Any thread.
const QSet<QString> &quitSafe();

// The policy for an action on a known target. A pure function. If the target's own name differs from the one
// in the action, both are judged, and the question shows both.
Risk assess(const AgentAction &action, const ActionTarget &target);

// The same on the action's current target. Thread: main.
QCoro::Task<Risk> assess(AgentAction action, Desktop desktop);

} // namespace Safety
