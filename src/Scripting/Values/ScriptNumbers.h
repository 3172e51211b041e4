// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Values/ScriptValue.h"

// The language's numbers: integers have at most 30 bits, larger ones become reals. Any thread.
namespace ScriptNumbers {

inline constexpr qint64 largestInteger = 536'870'911;

// Reads a number without a sign, such as "42", "1.5" or "2E+3".
std::optional<ScriptValue> fromText(const QString &text);

// An integer if the number is one and not too large, otherwise a real.
ScriptValue fromInteger(qint64 number);

// The same for the result of a calculation that may have left the range of qint64. Throws ScriptError if the
// number is infinite.
ScriptValue fromCalculation(double number, bool isWhole);

// "42"; "2.5"; "1.0E+4": reals from ten thousand, or below a ten-thousandth, have an exponent.
QString text(const ScriptValue &number);

enum class Rounding { Up, Down, TowardZero, ToNearest, AsTaughtInSchool };

// ToNearest rounds halves to the even neighbour, AsTaughtInSchool away from zero.
ScriptValue rounded(double number, Rounding rounding);

} // namespace ScriptNumbers
