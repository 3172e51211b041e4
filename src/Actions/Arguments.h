// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"

#include <QString>

// Reads the arguments of an action. Any thread.
namespace Arguments {

// Throws ActionError if the argument is missing; `what` names it in the message ("Missing app name.").
QString required(const AgentAction &action, const QString &key, const QString &what);

// The first argument that is present, or the fallback.
QString firstOf(const AgentAction &action, const QString &key, const QString &otherKey,
                const QString &fallback);

// The argument, or the fallback.
QString shown(const AgentAction &action, const QString &key, const QString &fallback = {});

} // namespace Arguments
