// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptValue.h"

#include <QStringList>

// The text item delimiters; the first one joins.
using ScriptDelimiters = QStringList;

// Conversions between the classes of values. Throws ScriptError if values are too large or nested too deeply.
namespace ScriptCoercion {

// "integer", "text", …; "missing value" is of the class "constant"; the class of an object is its own.
QString className(const ScriptValue &value);

// The value as text. Lists are joined with the first delimiter, or nothing. Records and missing values have
// no text.
std::optional<QString> text(const ScriptValue &value, const ScriptDelimiters &delimiters);

// The value as a number: numbers, texts that contain one, and the numbers of months and weekdays.
std::optional<ScriptValue> number(const ScriptValue &value);

// `as`. Throws ScriptError if it is impossible.
ScriptValue to(const ScriptValue &value, const QString &wantedClass, const ScriptDelimiters &delimiters);

// The value as written in a script, shortened, for messages.
QString source(const ScriptValue &value);

// The result of a script as text; nothing for values without one: missing values, lists, records, and objects
// of applications.
std::optional<QString> resultText(const ScriptValue &value);

} // namespace ScriptCoercion
