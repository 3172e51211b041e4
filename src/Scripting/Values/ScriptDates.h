// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptValue.h"

// Dates in the language's own, English form: "Monday, November 23, 2026 at 2:30:00 PM". Any thread.
namespace ScriptDates {

QString text(const QDateTime &time);
QString dateText(const QDateTime &time);      // "Monday, November 23, 2026"
QString shortDateText(const QDateTime &time); // "11/23/26"
QString timeText(const QDateTime &time);      // "2:30:00 PM"

// Reads the forms above, "November 23, 2026", "23 November 2026", "11/23/2026", "2026-11-23", each alone or
// with a time ("14:30", "2:30 PM").
std::optional<QDateTime> fromText(const QString &text);

// 1 for "January" and for "Sunday"; nothing if the name isn't one. Case-insensitive.
std::optional<int> numberOfMonth(const QString &name);
std::optional<int> numberOfWeekday(const QString &name);

// A property of a date: "year", "month", "time string" and so on; nothing if there is none of that name.
std::optional<ScriptValue> property(const QDateTime &time, const QString &name);

// The date with the property changed; nothing if it can't be changed. Days and times outside their range
// carry over. Throws ScriptError if the value is unsuitable.
std::optional<QDateTime> withProperty(const QDateTime &time, const QString &name, const ScriptValue &value);

} // namespace ScriptDates
