// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Values/ScriptElements.h"

#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptDates.h"
#include "Scripting/Values/ScriptTextParts.h"

#include <QRandomGenerator>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Form = ScriptObject::Form;

[[noreturn]] void failToGet(const QString &what, const ScriptValue &value)
{
    throw ScriptError(u"Can’t get %1 of %2."_s.arg(what, ScriptCoercion::source(value)),
                      ScriptError::NoSuchObject);
}

// "item 5", "every word", for messages.
QString described(const ScriptObject &selection)
{
    const QString text = ScriptCoercion::source(std::make_shared<const ScriptObject>(selection));
    return text.section(u" of "_s, 0, 0);
}

bool isOfClass(const ScriptValue &value, const QString &wanted)
{
    const QString own = ScriptCoercion::className(value);
    return own == wanted || (wanted == "number"_L1 && value.isNumber()) ||
           (wanted == "string"_L1 && own == "text"_L1) || wanted == "item"_L1;
}

struct Span
{
    qsizetype first = 0;
    qsizetype last = 0;
};

Span spanOf(const ScriptObject &selection, qsizetype count, const ScriptValue &whole)
{
    if (selection.form == Form::Every)
        return {0, count - 1};
    const qsizetype first = ScriptElements::position(selection.key, count, selection.name, whole);
    const qsizetype last = ScriptElements::position(selection.lastKey, count, selection.name, whole);
    return {std::min(first, last), std::max(first, last)};
}

qsizetype single(const ScriptObject &selection, qsizetype count, const ScriptValue &whole)
{
    const bool isIndex = selection.form == Form::Index && selection.key.isNumber();
    if (selection.form != Form::Middle && selection.form != Form::Some && !isIndex)
        failToGet(described(selection), whole);
    if (isIndex)
        return ScriptElements::position(selection.key, count, selection.name, whole);
    if (count == 0)
        failToGet(described(selection), whole);
    return selection.form == Form::Middle ? (count - 1) / 2 : QRandomGenerator::global()->bounded(count);
}

bool selectsSeveral(const ScriptObject &selection)
{
    return selection.form == Form::Every || selection.form == Form::Range;
}

ScriptValue listElement(const ScriptValue &list, const ScriptObject &selection)
{
    QList<ScriptValue> items = list.items();
    if (selection.name != "item"_L1)
        items.removeIf([&](const ScriptValue &item) { return !isOfClass(item, selection.name); });
    if (!selectsSeveral(selection))
        return items.at(single(selection, items.size(), list));
    const Span span = spanOf(selection, items.size(), list);
    return ScriptValue::list(items.mid(span.first, span.last - span.first + 1));
}

ScriptValue textRange(const ScriptValue &whole, const ScriptObject &selection,
                      const ScriptDelimiters &delimiters);

ScriptValue textElement(const ScriptValue &whole, const ScriptObject &selection,
                        const ScriptDelimiters &delimiters)
{
    const QString &text = whole.as<QString>();
    if (selection.name == "text"_L1)
        return selection.form == Form::Every ? whole : textRange(whole, selection, delimiters);
    const std::optional<ScriptTextParts::Parts> parts = ScriptTextParts::of(text, selection.name, delimiters);
    if (!parts)
        failToGet(described(selection), whole);
    const auto part = [&](qsizetype index) {
        return text.mid(parts->at(index).start, parts->at(index).length);
    };
    if (!selectsSeveral(selection))
        return part(single(selection, parts->size(), whole));
    const Span span = spanOf(selection, parts->size(), whole);
    QList<ScriptValue> items;
    for (qsizetype index = span.first; index <= span.last; ++index)
        items.append(part(index));
    return ScriptValue::list(items);
}

// One end of a range of text: a character's number, or an element such as `word 2`.
ScriptTextParts::Part textEnd(const ScriptValue &whole, const ScriptValue &key,
                              const ScriptDelimiters &delimiters)
{
    const bool isElement = key.is<ScriptValue::Object>();
    const QString className = isElement ? key.object().name : u"character"_s;
    const std::optional<ScriptTextParts::Parts> parts =
        ScriptTextParts::of(whole.as<QString>(), className, delimiters);
    if (!parts)
        failToGet(className, whole);
    const ScriptValue &index = isElement ? key.object().key : key;
    return parts->at(ScriptElements::position(index, parts->size(), className, whole));
}

ScriptValue textRange(const ScriptValue &whole, const ScriptObject &selection,
                      const ScriptDelimiters &delimiters)
{
    if (selection.form != Form::Range)
        failToGet(described(selection), whole);
    const ScriptTextParts::Part one = textEnd(whole, selection.key, delimiters);
    const ScriptTextParts::Part other = textEnd(whole, selection.lastKey, delimiters);
    const qsizetype start = std::min(one.start, other.start);
    const qsizetype end = std::max(one.start + one.length, other.start + other.length);
    return whole.as<QString>().mid(start, end - start);
}

std::optional<ScriptValue> listProperty(const ScriptValue &list, const QString &name)
{
    const QList<ScriptValue> &items = list.items();
    if (name == "length"_L1)
        return ScriptValue(qint64(items.size()));
    if (name == "reverse"_L1)
        return ScriptValue::list(QList<ScriptValue>(items.crbegin(), items.crend()));
    if (name != "rest"_L1)
        return std::nullopt;
    if (items.isEmpty())
        failToGet(u"rest"_s, list);
    return ScriptValue::list(items.mid(1));
}

// A shell would read the text as one word.
QString quotedForShell(QString text)
{
    return u'\'' + text.replace(u'\'', u"'\\''"_s) + u'\'';
}

ScriptValue codePoints(const QString &text)
{
    QList<ScriptValue> numbers;
    for (const uint codePoint : text.toUcs4())
        numbers.append(qint64(codePoint));
    return numbers.size() == 1 ? numbers.first() : ScriptValue::list(numbers);
}

std::optional<ScriptValue> textProperty(const QString &text, const QString &name)
{
    if (name == "length"_L1)
        return ScriptValue(qint64(ScriptTextParts::of(text, u"character"_s, {})->size()));
    if (name == "quoted form"_L1)
        return quotedForShell(text);
    if (name == "posix path"_L1)
        return text;
    if (name == "id"_L1)
        return codePoints(text);
    return std::nullopt;
}

std::optional<ScriptValue> recordProperty(const ScriptValue &record, const QString &name)
{
    if (const ScriptValue *entry = record.as<ScriptValue::Record>()->find(name))
        return *entry;
    if (name == "length"_L1)
        return ScriptValue(qint64(record.entries().size()));
    return std::nullopt;
}

} // namespace

std::optional<ScriptValue> ScriptElements::property(const ScriptValue &value, const QString &name)
{
    if (value.is<ScriptValue::Record>()) {
        if (const std::optional<ScriptValue> entry = recordProperty(value, name))
            return entry;
    }
    if (name == "class"_L1)
        return ScriptClass{ScriptCoercion::className(value)};
    if (name == "contents"_L1)
        return value;
    if (value.is<ScriptValue::List>())
        return listProperty(value, name);
    if (value.is<QString>())
        return textProperty(value.as<QString>(), name);
    if (value.is<ScriptValue::Date>())
        return ScriptDates::property(value.time(), name);
    if (value.is<ScriptFile>() && name == "posix path"_L1)
        return value.as<ScriptFile>().path;
    if (value.is<ScriptFile>() && name == "name"_L1)
        return value.as<ScriptFile>().path.section(u'/', -1, -1, QString::SectionSkipEmpty);
    return std::nullopt;
}

void ScriptElements::setProperty(const ScriptValue &value, const QString &name, const ScriptValue &newValue)
{
    if (value.is<ScriptValue::List>() && (name == "end"_L1 || name == "beginning"_L1)) {
        ScriptValues::requireNoCycle(value.as<ScriptValue::List>().get(), newValue);
        QList<ScriptValue> &items = value.items();
        if (items.size() >= ScriptLimits::items)
            throw ScriptError(u"The list is too long."_s, ScriptError::TooLarge);
        items.insert(name == "end"_L1 ? items.size() : 0, newValue);
        return;
    }
    if (value.is<ScriptValue::Record>()) {
        if (ScriptValue *entry = value.as<ScriptValue::Record>()->find(name)) {
            ScriptValues::requireNoCycle(value.as<ScriptValue::Record>().get(), newValue);
            *entry = newValue;
            return;
        }
    }
    if (value.is<ScriptValue::Date>()) {
        if (const std::optional<QDateTime> changed =
                ScriptDates::withProperty(value.time(), name, newValue)) {
            value.time() = *changed;
            return;
        }
    }
    throw ScriptError(u"Can’t set %1 of %2."_s.arg(name, ScriptCoercion::source(value)),
                      ScriptError::NotSettable);
}

ScriptValue ScriptElements::element(const ScriptValue &value, const ScriptObject &selection,
                                    const ScriptDelimiters &delimiters)
{
    if (value.is<ScriptValue::List>())
        return listElement(value, selection);
    if (value.is<ScriptValue::Record>() && selection.name == "item"_L1)
        return listElement(ScriptCoercion::to(value, u"list"_s, {}), selection);
    if (value.is<QString>())
        return textElement(value, selection, delimiters);
    if (isTextClass(selection.name) && (value.isNumber() || value.is<ScriptFile>()))
        return textElement(ScriptCoercion::to(value, u"text"_s, {}), selection, delimiters);
    failToGet(described(selection), value);
}

void ScriptElements::setElement(const ScriptValue &value, const ScriptObject &selection,
                                const ScriptValue &newValue)
{
    if (!value.is<ScriptValue::List>() || selection.name != "item"_L1 || selectsSeveral(selection))
        throw ScriptError(u"Can’t set %1 of %2."_s.arg(described(selection), ScriptCoercion::source(value)),
                          ScriptError::NotSettable);
    ScriptValues::requireNoCycle(value.as<ScriptValue::List>().get(), newValue);
    const qsizetype index = single(selection, value.items().size(), value);
    value.items()[index] = newValue;
}

qsizetype ScriptElements::position(const ScriptValue &index, qsizetype count, const QString &className,
                                   const ScriptValue &whole)
{
    const qint64 number = ScriptCoercion::to(index, u"integer"_s, {}).as<qint64>();
    const qint64 fromStart = number > 0 ? number - 1 : count + number;
    if (number == 0 || fromStart < 0 || fromStart >= count)
        failToGet(className + u' ' + QString::number(number), whole);
    return fromStart;
}

bool ScriptElements::isTextClass(const QString &className)
{
    return ScriptTextParts::isClass(className) || className == "text"_L1;
}
