// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Values/ScriptNumbers.h"

#include "Scripting/ScriptError.h"

#include <QLocale>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int significantDigits = 15;

// The shortest notation; "3" becomes "3.0".
QString plain(double number)
{
    const QString digits = QString::number(number, 'g', significantDigits);
    return digits.contains(u'.') ? digits : digits + u".0"_s;
}

// "1.5E+4" from "1.5e+04".
QString withExponent(double number)
{
    const int exponent = static_cast<int>(std::floor(std::log10(std::abs(number))));
    QString digits = QString::number(number, 'e', significantDigits - 1);
    const qsizetype mark = digits.indexOf(u'e');
    const int written = mark < 0 ? exponent : digits.mid(mark + 1).toInt();
    digits.truncate(mark);
    while (digits.endsWith(u'0') && !digits.endsWith(u".0"_s))
        digits.chop(1);
    return digits + u'E' + (written < 0 ? u'-' : u'+') + QString::number(std::abs(written));
}

} // namespace

std::optional<ScriptValue> ScriptNumbers::fromText(const QString &text)
{
    bool isInteger = false;
    const qint64 integer = text.toLongLong(&isInteger);
    if (isInteger)
        return fromInteger(integer);
    bool isReal = false;
    const double real = QLocale::c().toDouble(text, &isReal);
    if (!isReal || !std::isfinite(real))
        return std::nullopt;
    return ScriptValue(real);
}

ScriptValue ScriptNumbers::fromInteger(qint64 number)
{
    if (number > largestInteger || number < -largestInteger - 1)
        return static_cast<double>(number);
    return number;
}

ScriptValue ScriptNumbers::fromCalculation(double number, bool isWhole)
{
    if (!std::isfinite(number))
        throw ScriptError(u"The result of a calculation is too large."_s, ScriptError::TooLarge);
    if (isWhole && std::abs(number) <= static_cast<double>(largestInteger))
        return static_cast<qint64>(number);
    return number;
}

QString ScriptNumbers::text(const ScriptValue &number)
{
    if (number.is<qint64>())
        return QString::number(number.as<qint64>());
    const double real = number.as<double>();
    const double size = std::abs(real);
    const bool isPlain = size == 0.0 || (size > 0.0001 && size < 10000.0);
    return isPlain ? plain(real) : withExponent(real);
}

ScriptValue ScriptNumbers::rounded(double number, Rounding rounding)
{
    switch (rounding) {
    case Rounding::Up:
        return fromCalculation(std::ceil(number), true);
    case Rounding::Down:
        return fromCalculation(std::floor(number), true);
    case Rounding::TowardZero:
        return fromCalculation(std::trunc(number), true);
    case Rounding::AsTaughtInSchool:
        return fromCalculation(std::round(number), true);
    case Rounding::ToNearest:
        break;
    }
    return fromCalculation(std::nearbyint(number), true);
}
