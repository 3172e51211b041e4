// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"

#include <QString>

// What makes two actions the same step: the name and all arguments, in whatever order the model wrote them.
// Equal for equal actions, different for different ones; nobody but the repeat check reads it. Pure.
QString actionSignature(const AgentAction &action);
