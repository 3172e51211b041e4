// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptCoercion.h"
#include "Scripting/Values/ScriptComparison.h"

enum class ScriptOperator {
    Plus,
    Minus,
    Multiply,
    Divide,
    Div,
    Mod,
    Power,
    Concatenate,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    StartsWith,
    EndsWith,
    Contains,
    DoesNotContain,
    IsIn,
    IsNotIn,
    And,
    Or,
};

// What a script has set for the operators.
struct ScriptSettings
{
    ScriptComparisonRules comparison;
    ScriptDelimiters delimiters{QString()};
};

// The operators, with their coercions. Throw ScriptError.
namespace ScriptOperators {

ScriptValue apply(ScriptOperator operation, const ScriptValue &left, const ScriptValue &right,
                  const ScriptSettings &settings);

ScriptValue negated(const ScriptValue &value);

// The value of a condition.
bool truth(const ScriptValue &value);

} // namespace ScriptOperators
