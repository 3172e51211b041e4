// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QSet>
#include <QString>

#include <optional>

// What the policy says of an action: run it now, or ask the user first and give this reason.
struct Risk
{
    enum class Kind { Safe, Confirm };

    static Risk safe() { return {}; }
    static Risk confirm(const QString &reason) { return {Kind::Confirm, reason}; }

    Kind kind = Kind::Safe;
    // Of Confirm only. It quotes the arguments as the model wrote them, whatever they hold; a script stands
    // on lines of its own below the heading.
    QString reason;

    friend bool operator==(const Risk &, const Risk &) = default;
};

// The fixed policy that every action passes before it is carried out. Stateless; nothing here fails.
namespace Safety {

// Names, as compared, of the applications that may be quit without asking. Safe from any thread.
const QSet<QString> &quitSafe();

// The policy itself: a pure function, given what the action would act upon. Where an action calls that by
// another name, both names are judged, and the user sees both.
Risk assess(const AgentAction &action, const ActionTarget &target);

// The same, with what the action would act upon now. Main thread.
QCoro::Task<Risk> assess(AgentAction action, Desktop desktop);

} // namespace Safety
