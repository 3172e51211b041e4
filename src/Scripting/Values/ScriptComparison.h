// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptValue.h"

#include <QFlags>

// What comparisons of texts disregard, as set by `considering` and `ignoring`.
enum class ScriptIgnored {
    Case = 1,
    Diacriticals = 2,
    Hyphens = 4,
    Punctuation = 8,
    WhiteSpace = 16,
};
Q_DECLARE_FLAGS(ScriptIgnoredParts, ScriptIgnored)
Q_DECLARE_OPERATORS_FOR_FLAGS(ScriptIgnoredParts)

struct ScriptComparisonRules
{
    ScriptIgnoredParts ignored = ScriptIgnored::Case;
    bool isNumeric = false; // `considering numeric strings`: "1.10" comes after "1.9"
};

// Comparisons of values. Throws ScriptError if values are too large or nested too deeply.
namespace ScriptComparison {

// The text in the form that is compared.
QString key(const QString &text, ScriptIgnoredParts ignored);

// Values of different classes are never equal, except integers and reals.
bool equal(const ScriptValue &left, const ScriptValue &right, const ScriptComparisonRules &rules);

// Negative, zero or positive. Nothing if the values have no order. Texts and numbers are comparable if the
// right one can be read as one of the left one's class.
std::optional<int> order(const ScriptValue &left, const ScriptValue &right,
                         const ScriptComparisonRules &rules);

enum class Place { Start, End, Anywhere };

// Whether a text, list or record contains a part in this place. A part of a list is a list; other values
// stand for a list of one item.
bool contains(const ScriptValue &whole, const ScriptValue &part, Place place,
              const ScriptComparisonRules &rules);

} // namespace ScriptComparison
