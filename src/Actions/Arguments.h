// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"

#include <QString>

// The arguments of an action, as those who carry it out or show it read them. Any thread.
namespace Arguments {

// Throws ActionError, which says what is missing ("Missing app name.").
QString required(const AgentAction &action, const QString &key, const QString &what);

// The first of the arguments that is there, else the fallback.
QString firstOf(const AgentAction &action, const QString &key, const QString &otherKey,
                const QString &fallback);

// The argument, else the fallback.
QString shown(const AgentAction &action, const QString &key, const QString &fallback = {});

} // namespace Arguments
