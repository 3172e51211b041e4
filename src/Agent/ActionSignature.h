// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"

#include <QString>

// Identifies a step: equal if and only if the actions have the same name and arguments, in any order. Used to
// detect repetition. Pure.
QString actionSignature(const AgentAction &action);
