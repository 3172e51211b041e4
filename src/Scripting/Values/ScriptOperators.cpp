// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Values/ScriptOperators.h"

#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptNumbers.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

ScriptValue numberFrom(const ScriptValue &value)
{
    return ScriptCoercion::to(value, u"number"_s, {});
}

double nonZero(double divisor, double dividend)
{
    if (divisor == 0.0)
        throw ScriptError(u"Can’t divide %1 by zero."_s.arg(ScriptNumbers::text(dividend)),
                          ScriptError::DivisionByZero);
    return divisor;
}

// The remainder has the sign of the dividend.
double calculated(ScriptOperator operation, double left, double right)
{
    switch (operation) {
    case ScriptOperator::Plus:
        return left + right;
    case ScriptOperator::Minus:
        return left - right;
    case ScriptOperator::Multiply:
        return left * right;
    case ScriptOperator::Divide:
        return left / nonZero(right, left);
    case ScriptOperator::Div:
        return std::trunc(left / nonZero(right, left));
    case ScriptOperator::Mod:
        return std::fmod(left, nonZero(right, left));
    default:
        return std::pow(left, right);
    }
}

// Quotients and powers are reals, whole quotients integers, and the rest integers if both operands are.
ScriptValue arithmetic(ScriptOperator operation, const ScriptValue &left, const ScriptValue &right)
{
    const ScriptValue first = numberFrom(left);
    const ScriptValue second = numberFrom(right);
    const bool areIntegers = first.is<qint64>() && second.is<qint64>();
    const bool isReal = operation == ScriptOperator::Divide || operation == ScriptOperator::Power;
    const bool isWhole = operation == ScriptOperator::Div || (areIntegers && !isReal);
    return ScriptNumbers::fromCalculation(calculated(operation, first.real(), second.real()), isWhole);
}

constexpr double longestInterval = 1e12; // in seconds

ScriptValue shifted(const ScriptValue &date, double seconds)
{
    if (!(std::abs(seconds) < longestInterval))
        throw ScriptError(u"There is no such date."_s);
    return ScriptValue::date(date.time().addSecs(static_cast<qint64>(std::trunc(seconds))));
}

// Dates can be subtracted, and seconds added to them.
ScriptValue sum(ScriptOperator operation, const ScriptValue &left, const ScriptValue &right)
{
    const bool isSum = operation == ScriptOperator::Plus;
    if (left.is<ScriptValue::Date>() && right.is<ScriptValue::Date>() && !isSum)
        return ScriptNumbers::fromInteger(right.time().secsTo(left.time()));
    if (left.is<ScriptValue::Date>() && !right.is<ScriptValue::Date>())
        return shifted(left, (isSum ? 1.0 : -1.0) * numberFrom(right).real());
    if (right.is<ScriptValue::Date>() && isSum)
        return shifted(right, numberFrom(left).real());
    return arithmetic(operation, left, right);
}

ScriptValue joinedTexts(const QString &left, const ScriptValue &right, const ScriptSettings &settings)
{
    const std::optional<QString> end = ScriptCoercion::text(right, settings.delimiters);
    if (!end)
        throw ScriptError(u"Can’t make %1 into type text."_s.arg(ScriptCoercion::source(right)),
                          ScriptError::BadCoercion);
    if (left.size() + end->size() > ScriptLimits::characters)
        throw ScriptError(u"The text is too long."_s, ScriptError::TooLarge);
    return left + *end;
}

ScriptValue joinedRecords(const ScriptValue &left, const ScriptValue &right)
{
    auto entries = left.entries();
    ScriptTraversal traversal;
    for (const auto &entry : right.entries()) {
        traversal.visit(static_cast<qsizetype>(left.entries().size()));
        if (!left.as<ScriptValue::Record>()->find(entry.first))
            entries.push_back(entry);
    }
    return ScriptValue::record(entries);
}

// The left operand decides whether the result is a text, a record or a list.
ScriptValue joined(const ScriptValue &left, const ScriptValue &right, const ScriptSettings &settings)
{
    if (left.is<QString>())
        return joinedTexts(left.as<QString>(), right, settings);
    if (left.is<ScriptValue::Record>() && right.is<ScriptValue::Record>())
        return joinedRecords(left, right);
    const QList<ScriptValue> start = ScriptCoercion::to(left, u"list"_s, {}).items();
    return ScriptValue::list(start + ScriptCoercion::to(right, u"list"_s, {}).items());
}

int ordered(const ScriptValue &left, const ScriptValue &right, const ScriptSettings &settings)
{
    const std::optional<int> order = ScriptComparison::order(left, right, settings.comparison);
    if (!order)
        throw ScriptError(
            u"Can’t compare %1 with %2."_s.arg(ScriptCoercion::source(left), ScriptCoercion::source(right)),
            ScriptError::BadCoercion);
    return *order;
}

} // namespace

ScriptValue ScriptOperators::apply(ScriptOperator operation, const ScriptValue &left,
                                   const ScriptValue &right, const ScriptSettings &settings)
{
    using Place = ScriptComparison::Place;
    const ScriptComparisonRules &rules = settings.comparison;
    switch (operation) {
    case ScriptOperator::Plus:
    case ScriptOperator::Minus:
        return sum(operation, left, right);
    case ScriptOperator::Multiply:
    case ScriptOperator::Divide:
    case ScriptOperator::Div:
    case ScriptOperator::Mod:
    case ScriptOperator::Power:
        return arithmetic(operation, left, right);
    case ScriptOperator::Concatenate:
        return joined(left, right, settings);
    case ScriptOperator::Equal:
        return ScriptComparison::equal(left, right, rules);
    case ScriptOperator::NotEqual:
        return !ScriptComparison::equal(left, right, rules);
    case ScriptOperator::Less:
        return ordered(left, right, settings) < 0;
    case ScriptOperator::LessOrEqual:
        return ordered(left, right, settings) <= 0;
    case ScriptOperator::Greater:
        return ordered(left, right, settings) > 0;
    case ScriptOperator::GreaterOrEqual:
        return ordered(left, right, settings) >= 0;
    case ScriptOperator::StartsWith:
        return ScriptComparison::contains(left, right, Place::Start, rules);
    case ScriptOperator::EndsWith:
        return ScriptComparison::contains(left, right, Place::End, rules);
    case ScriptOperator::Contains:
        return ScriptComparison::contains(left, right, Place::Anywhere, rules);
    case ScriptOperator::DoesNotContain:
        return !ScriptComparison::contains(left, right, Place::Anywhere, rules);
    case ScriptOperator::IsIn:
        return ScriptComparison::contains(right, left, Place::Anywhere, rules);
    case ScriptOperator::IsNotIn:
        return !ScriptComparison::contains(right, left, Place::Anywhere, rules);
    case ScriptOperator::And:
        return truth(left) && truth(right);
    case ScriptOperator::Or:
        return truth(left) || truth(right);
    }
    return {};
}

ScriptValue ScriptOperators::negated(const ScriptValue &value)
{
    const ScriptValue number = numberFrom(value);
    return number.is<qint64>() ? ScriptNumbers::fromInteger(-number.as<qint64>())
                               : ScriptValue(-number.real());
}

bool ScriptOperators::truth(const ScriptValue &value)
{
    return ScriptCoercion::to(value, u"boolean"_s, {}).as<bool>();
}
