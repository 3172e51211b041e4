// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Values/ScriptComparison.h"

#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isHyphen(QChar character)
{
    return character.category() == QChar::Punctuation_Dash || character == u'\u00AD';
}

bool isIgnored(QChar character, ScriptIgnoredParts ignored)
{
    return (ignored.testFlag(ScriptIgnored::Diacriticals) && character.isMark()) ||
           (ignored.testFlag(ScriptIgnored::Hyphens) && isHyphen(character)) ||
           (ignored.testFlag(ScriptIgnored::Punctuation) && character.isPunct() && !isHyphen(character)) ||
           (ignored.testFlag(ScriptIgnored::WhiteSpace) && character.isSpace());
}

int sign(qint64 difference)
{
    return difference < 0 ? -1 : (difference > 0 ? 1 : 0);
}

QStringView digitsAt(const QString &text, qsizetype position)
{
    qsizetype end = position;
    while (end < text.size() && text.at(end).isDigit())
        ++end;
    return QStringView(text).mid(position, end - position);
}

QStringView withoutZeros(QStringView digits)
{
    while (digits.size() > 1 && digits.front() == u'0')
        digits = digits.mid(1);
    return digits;
}

// Runs of digits count as numbers.
int numericOrder(const QString &left, const QString &right)
{
    qsizetype atLeft = 0;
    qsizetype atRight = 0;
    while (atLeft < left.size() && atRight < right.size()) {
        const QStringView leftDigits = digitsAt(left, atLeft);
        const QStringView rightDigits = digitsAt(right, atRight);
        if (leftDigits.isEmpty() || rightDigits.isEmpty()) {
            if (left.at(atLeft) != right.at(atRight))
                return left.at(atLeft) < right.at(atRight) ? -1 : 1;
            ++atLeft;
            ++atRight;
            continue;
        }
        const QStringView first = withoutZeros(leftDigits);
        const QStringView second = withoutZeros(rightDigits);
        const int difference =
            first.size() != second.size() ? sign(first.size() - second.size()) : sign(first.compare(second));
        if (difference != 0)
            return difference;
        atLeft += leftDigits.size();
        atRight += rightDigits.size();
    }
    return sign((left.size() - atLeft) - (right.size() - atRight));
}

int textOrder(const QString &left, const QString &right, const ScriptComparisonRules &rules)
{
    const QString first = ScriptComparison::key(left, rules.ignored);
    const QString second = ScriptComparison::key(right, rules.ignored);
    return rules.isNumeric ? numericOrder(first, second) : sign(first.compare(second));
}

bool equalObjects(const ScriptValue &left, const ScriptValue &right, const ScriptComparisonRules &rules,
                  ScriptTraversal &traversal);

bool equalWithin(const ScriptValue &left, const ScriptValue &right, const ScriptComparisonRules &rules,
                 ScriptTraversal &traversal);

bool equalLists(const QList<ScriptValue> &left, const QList<ScriptValue> &right,
                const ScriptComparisonRules &rules, ScriptTraversal &traversal)
{
    const ScriptTraversal::Level level(traversal);
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](const ScriptValue &first, const ScriptValue &second) {
                          return equalWithin(first, second, rules, traversal);
                      });
}

// Whether the record has all entries of the other one.
bool hasEntriesOf(const ScriptValue &record, const ScriptValue &other, const ScriptComparisonRules &rules,
                  ScriptTraversal &traversal)
{
    const ScriptTraversal::Level level(traversal);
    return std::all_of(other.entries().begin(), other.entries().end(), [&](const auto &entry) {
        traversal.visit(static_cast<qsizetype>(record.entries().size()));
        const ScriptValue *own = record.as<ScriptValue::Record>()->find(entry.first);
        return own && equalWithin(*own, entry.second, rules, traversal);
    });
}

bool equalWithin(const ScriptValue &left, const ScriptValue &right, const ScriptComparisonRules &rules,
                 ScriptTraversal &traversal)
{
    traversal.visit();
    if (left.isNumber() && right.isNumber())
        return left.real() == right.real();
    if (left.is<QString>() && right.is<QString>())
        return textOrder(left.as<QString>(), right.as<QString>(), rules) == 0;
    if (left.is<ScriptValue::List>() && right.is<ScriptValue::List>())
        return equalLists(left.items(), right.items(), rules, traversal);
    if (left.is<ScriptValue::Record>() && right.is<ScriptValue::Record>())
        return left.entries().size() == right.entries().size() && hasEntriesOf(left, right, rules, traversal);
    if (left.is<ScriptValue::Date>() && right.is<ScriptValue::Date>())
        return left.time() == right.time();
    if (left.is<ScriptConstant>() && right.is<ScriptConstant>())
        return left.as<ScriptConstant>() == right.as<ScriptConstant>();
    if (left.is<ScriptClass>() && right.is<ScriptClass>())
        return ScriptCoercion::className(left) == ScriptCoercion::className(right) &&
               left.as<ScriptClass>() == right.as<ScriptClass>();
    if (left.is<ScriptFile>() && right.is<ScriptFile>())
        return left.as<ScriptFile>() == right.as<ScriptFile>();
    if (left.is<bool>() && right.is<bool>())
        return left.as<bool>() == right.as<bool>();
    if (left.is<ScriptValue::Object>() && right.is<ScriptValue::Object>())
        return equalObjects(left, right, rules, traversal);
    return left.isMissing() && right.isMissing();
}

bool equalObjects(const ScriptValue &left, const ScriptValue &right, const ScriptComparisonRules &rules,
                  ScriptTraversal &traversal)
{
    const ScriptObject *first = left.as<ScriptValue::Object>().get();
    const ScriptObject *second = right.as<ScriptValue::Object>().get();
    while (first && second) {
        if (first->kind != second->kind || first->form != second->form ||
            first->name.compare(second->name, Qt::CaseInsensitive) != 0 ||
            !equalWithin(first->key, second->key, rules, traversal) ||
            !equalWithin(first->lastKey, second->lastKey, rules, traversal))
            return false;
        first = first->container.get();
        second = second->container.get();
    }
    return first == second;
}

bool containsText(const QString &whole, const QString &part, ScriptComparison::Place place,
                  const ScriptComparisonRules &rules)
{
    const QString text = ScriptComparison::key(whole, rules.ignored);
    const QString wanted = ScriptComparison::key(part, rules.ignored);
    switch (place) {
    case ScriptComparison::Place::Start:
        return text.startsWith(wanted);
    case ScriptComparison::Place::End:
        return text.endsWith(wanted);
    case ScriptComparison::Place::Anywhere:
        break;
    }
    return text.contains(wanted);
}

bool containsList(const QList<ScriptValue> &whole, const QList<ScriptValue> &part,
                  ScriptComparison::Place place, const ScriptComparisonRules &rules)
{
    if (part.size() > whole.size())
        return false;
    const qsizetype last = whole.size() - part.size();
    const qsizetype from = place == ScriptComparison::Place::End ? last : 0;
    const qsizetype to = place == ScriptComparison::Place::Start ? 0 : last;
    ScriptTraversal traversal;
    for (qsizetype start = from; start <= to; ++start) {
        const auto matches = [&](qsizetype index) {
            return equalWithin(whole.at(start + index), part.at(index), rules, traversal);
        };
        qsizetype index = 0;
        while (index < part.size() && matches(index))
            ++index;
        if (index == part.size())
            return true;
    }
    return false;
}

} // namespace

QString ScriptComparison::key(const QString &text, ScriptIgnoredParts ignored)
{
    QString key = text.normalized(QString::NormalizationForm_D);
    if (ignored.testFlag(ScriptIgnored::Case))
        key = key.toCaseFolded();
    if (ignored != ScriptIgnoredParts(ScriptIgnored::Case))
        key.removeIf([ignored](QChar character) { return isIgnored(character, ignored); });
    return key;
}

bool ScriptComparison::equal(const ScriptValue &left, const ScriptValue &right,
                             const ScriptComparisonRules &rules)
{
    ScriptTraversal traversal;
    return equalWithin(left, right, rules, traversal);
}

std::optional<int> ScriptComparison::order(const ScriptValue &left, const ScriptValue &right,
                                           const ScriptComparisonRules &rules)
{
    if (left.isNumber()) {
        const std::optional<ScriptValue> number = ScriptCoercion::number(right);
        if (!number)
            return std::nullopt;
        return left.real() < number->real() ? -1 : (left.real() > number->real() ? 1 : 0);
    }
    if (left.is<ScriptValue::Date>() && right.is<ScriptValue::Date>())
        return sign(right.time().msecsTo(left.time()));
    if (!left.is<QString>())
        return std::nullopt;
    const std::optional<QString> text = ScriptCoercion::text(right, {});
    return text ? std::optional(textOrder(left.as<QString>(), *text, rules)) : std::nullopt;
}

bool ScriptComparison::contains(const ScriptValue &whole, const ScriptValue &part, Place place,
                                const ScriptComparisonRules &rules)
{
    if (whole.is<ScriptValue::List>()) {
        const QList<ScriptValue> items = part.is<ScriptValue::List>() ? part.items() : QList{part};
        return containsList(whole.items(), items, place, rules);
    }
    if (whole.is<ScriptValue::Record>() && part.is<ScriptValue::Record>() && place == Place::Anywhere) {
        ScriptTraversal traversal;
        return hasEntriesOf(whole, part, rules, traversal);
    }
    const std::optional<QString> text = ScriptCoercion::text(whole, {});
    const std::optional<QString> wanted = ScriptCoercion::text(part, {});
    if (!text || !wanted)
        throw ScriptError(
            u"Can’t find %1 in %2."_s.arg(ScriptCoercion::source(part), ScriptCoercion::source(whole)));
    return containsText(*text, *wanted, place, rules);
}
