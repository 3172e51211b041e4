// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Values/ScriptCoercion.h"

#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptDates.h"
#include "Scripting/Values/ScriptNumbers.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestSource = 120;

std::optional<QString> joined(const QList<ScriptValue> &items, const ScriptDelimiters &delimiters,
                              ScriptTraversal &traversal);

std::optional<QString> textWithin(const ScriptValue &value, const ScriptDelimiters &delimiters,
                                  ScriptTraversal &traversal)
{
    traversal.visit();
    if (value.is<QString>())
        return value.as<QString>();
    if (value.isNumber())
        return ScriptNumbers::text(value);
    if (value.is<bool>())
        return value.as<bool>() ? u"true"_s : u"false"_s;
    if (value.is<ScriptConstant>())
        return value.as<ScriptConstant>().name;
    if (value.is<ScriptClass>())
        return value.as<ScriptClass>().name;
    if (value.is<ScriptFile>())
        return value.as<ScriptFile>().path;
    if (value.is<ScriptValue::Date>())
        return ScriptDates::text(value.time());
    if (value.is<ScriptValue::List>())
        return joined(value.items(), delimiters, traversal);
    if (value.is<ScriptValue::Reference>())
        return textWithin(ScriptValues::dereferenced(value), delimiters, traversal);
    return std::nullopt;
}

std::optional<QString> joined(const QList<ScriptValue> &items, const ScriptDelimiters &delimiters,
                              ScriptTraversal &traversal)
{
    const ScriptTraversal::Level level(traversal);
    const QString delimiter = delimiters.isEmpty() ? QString() : delimiters.first();
    QString text;
    for (qsizetype index = 0; index < items.size(); ++index) {
        const std::optional<QString> item = textWithin(items.at(index), delimiters, traversal);
        if (!item)
            return std::nullopt;
        text += index > 0 ? delimiter + *item : *item;
        if (text.size() > ScriptLimits::characters)
            throw ScriptError(u"The text is too long."_s, ScriptError::TooLarge);
    }
    return text;
}

QString quoted(QString text)
{
    text.replace(u'\\', u"\\\\"_s);
    text.replace(u'"', u"\\\""_s);
    return u'"' + text + u'"';
}

void describe(const ScriptValue &value, QString &text, int depth);

void describeParts(const ScriptValue &value, QString &text, int depth)
{
    text += u'{';
    const qsizetype start = text.size();
    const auto separate = [&text, start] { text += text.size() > start ? u", "_s : QString(); };
    if (value.is<ScriptValue::List>()) {
        for (const ScriptValue &item : std::as_const(value.items())) {
            separate();
            describe(item, text, depth + 1);
            if (text.size() > longestSource)
                break;
        }
    } else {
        for (const auto &[key, entry] : value.entries()) {
            separate();
            text += key + u':';
            describe(entry, text, depth + 1);
            if (text.size() > longestSource)
                break;
        }
    }
    text += u'}';
}

QString phraseOf(const ScriptObject &object)
{
    using Form = ScriptObject::Form;
    if (object.kind == ScriptObject::Kind::Property)
        return object.name;
    switch (object.form) {
    case Form::Every:
        return u"every "_s + object.name;
    case Form::Middle:
        return u"middle "_s + object.name;
    case Form::Some:
        return u"some "_s + object.name;
    case Form::Identifier:
        return object.name + u" id "_s + ScriptCoercion::source(object.key);
    case Form::Range:
        return object.name + u' ' + ScriptCoercion::source(object.key) + u" thru "_s +
               ScriptCoercion::source(object.lastKey);
    case Form::Index:
    case Form::Name:
        break;
    }
    return object.name + u' ' + ScriptCoercion::source(object.key);
}

QString describeObject(const ScriptObject &whole)
{
    QStringList phrases;
    for (const ScriptObject *object = &whole; object; object = object->container.get()) {
        switch (object->kind) {
        case ScriptObject::Kind::Script:
            break;
        case ScriptObject::Kind::Language:
            phrases.append(u"AppleScript"_s);
            break;
        case ScriptObject::Kind::Application:
            phrases.append(u"application "_s + quoted(object->name));
            break;
        case ScriptObject::Kind::Property:
        case ScriptObject::Kind::Element:
            phrases.append(phraseOf(*object));
            break;
        }
    }
    return phrases.isEmpty() ? u"«script»"_s : phrases.join(u" of "_s);
}

void describe(const ScriptValue &value, QString &text, int depth)
{
    if (text.size() > longestSource || depth > ScriptLimits::depth)
        return;
    if (value.isMissing())
        text += u"missing value"_s;
    else if (value.is<QString>())
        text += quoted(value.as<QString>().left(longestSource));
    else if (value.is<ScriptValue::List>() || value.is<ScriptValue::Record>())
        describeParts(value, text, depth);
    else if (value.is<ScriptValue::Date>())
        text += u"date "_s + quoted(ScriptDates::text(value.time()));
    else if (value.is<ScriptFile>())
        text += u"file "_s + quoted(value.as<ScriptFile>().path);
    else if (value.is<ScriptValue::Object>())
        text += describeObject(value.object());
    else if (value.is<ScriptValue::Reference>())
        describe(ScriptValues::dereferenced(value), text, depth + 1);
    else
        text += ScriptCoercion::text(value, {}).value_or(QString());
}

std::optional<ScriptValue> integer(const ScriptValue &value)
{
    const std::optional<ScriptValue> number = ScriptCoercion::number(value);
    if (!number || number->is<qint64>())
        return number;
    const ScriptValue rounded =
        ScriptNumbers::rounded(number->real(), ScriptNumbers::Rounding::AsTaughtInSchool);
    return rounded.is<qint64>() ? std::optional(rounded) : std::nullopt;
}

std::optional<ScriptValue> real(const ScriptValue &value)
{
    const std::optional<ScriptValue> number = ScriptCoercion::number(value);
    return number ? std::optional(ScriptValue(number->real())) : std::nullopt;
}

std::optional<ScriptValue> boolean(const ScriptValue &value)
{
    if (value.is<bool>())
        return value;
    if (value.is<QString>()) {
        const bool isTrue = value.as<QString>().compare("true"_L1, Qt::CaseInsensitive) == 0;
        const bool isFalse = value.as<QString>().compare("false"_L1, Qt::CaseInsensitive) == 0;
        return isTrue || isFalse ? std::optional(ScriptValue(isTrue)) : std::nullopt;
    }
    return value.isNumber() ? std::optional(ScriptValue(value.real() != 0.0)) : std::nullopt;
}

ScriptValue list(const ScriptValue &value)
{
    if (value.is<ScriptValue::List>())
        return value;
    if (!value.is<ScriptValue::Record>())
        return ScriptValue::list({value});
    QList<ScriptValue> items;
    for (const auto &entry : value.entries())
        items.append(entry.second);
    return ScriptValue::list(items);
}

std::optional<ScriptValue> date(const ScriptValue &value)
{
    if (value.is<ScriptValue::Date>())
        return value;
    if (!value.is<QString>())
        return std::nullopt;
    const std::optional<QDateTime> time = ScriptDates::fromText(value.as<QString>());
    return time ? std::optional(ScriptValue::date(*time)) : std::nullopt;
}

std::optional<ScriptValue> file(const ScriptValue &value)
{
    if (value.is<ScriptFile>())
        return value;
    if (!value.is<QString>())
        return std::nullopt;
    return ScriptValue(ScriptFile{value.as<QString>()});
}

std::optional<ScriptValue> converted(const ScriptValue &value, const QString &wantedClass,
                                     const ScriptDelimiters &delimiters)
{
    if (wantedClass == "text"_L1 || wantedClass == "string"_L1 || wantedClass == "unicode text"_L1) {
        const std::optional<QString> text = ScriptCoercion::text(value, delimiters);
        return text ? std::optional(ScriptValue(*text)) : std::nullopt;
    }
    if (wantedClass == "integer"_L1)
        return integer(value);
    if (wantedClass == "real"_L1)
        return real(value);
    if (wantedClass == "number"_L1)
        return ScriptCoercion::number(value);
    if (wantedClass == "boolean"_L1)
        return boolean(value);
    if (wantedClass == "list"_L1)
        return list(value);
    if (wantedClass == "date"_L1)
        return date(value);
    if (wantedClass == "alias"_L1 || wantedClass == "file"_L1 || wantedClass == "posix file"_L1)
        return file(value);
    const bool isOwnClass = ScriptCoercion::className(value) == wantedClass || wantedClass == "reference"_L1;
    return isOwnClass ? std::optional(value) : std::nullopt;
}

} // namespace

QString ScriptCoercion::className(const ScriptValue &value)
{
    static const QStringList names{u"constant"_s, u"boolean"_s, u"integer"_s,  u"real"_s, u"text"_s,
                                   u"constant"_s, u"class"_s,   u"file"_s,     u"date"_s, u"list"_s,
                                   u"record"_s,   u"object"_s,  u"reference"_s};
    static_assert(std::variant_size_v<ScriptValue::Content> == 13);
    if (value.is<ScriptConstant>() && ScriptDates::numberOfMonth(value.as<ScriptConstant>().name))
        return u"month"_s;
    if (value.is<ScriptConstant>() && ScriptDates::numberOfWeekday(value.as<ScriptConstant>().name))
        return u"weekday"_s;
    if (value.is<ScriptValue::Reference>())
        return className(ScriptValues::dereferenced(value));
    if (!value.is<ScriptValue::Object>())
        return names.at(value.index());
    switch (value.object().kind) {
    case ScriptObject::Kind::Script:
        return u"script"_s;
    case ScriptObject::Kind::Language:
    case ScriptObject::Kind::Application:
        return u"application"_s;
    case ScriptObject::Kind::Property:
    case ScriptObject::Kind::Element:
        break;
    }
    return value.object().name;
}

std::optional<QString> ScriptCoercion::text(const ScriptValue &value, const ScriptDelimiters &delimiters)
{
    ScriptTraversal traversal;
    return textWithin(value, delimiters, traversal);
}

std::optional<ScriptValue> ScriptCoercion::number(const ScriptValue &value)
{
    if (value.isNumber())
        return value;
    if (value.is<bool>())
        return ScriptValue(value.as<bool>() ? qint64(1) : qint64(0));
    if (value.is<ScriptConstant>()) {
        const QString &name = value.as<ScriptConstant>().name;
        const std::optional<int> month = ScriptDates::numberOfMonth(name);
        const std::optional<int> number = month ? month : ScriptDates::numberOfWeekday(name);
        return number ? std::optional(ScriptValue(qint64(*number))) : std::nullopt;
    }
    if (value.is<ScriptValue::List>() && value.items().size() == 1 &&
        !value.items().first().is<ScriptValue::List>())
        return number(value.items().first());
    return value.is<QString>() ? ScriptNumbers::fromText(value.as<QString>().trimmed()) : std::nullopt;
}

ScriptValue ScriptCoercion::to(const ScriptValue &value, const QString &wantedClass,
                               const ScriptDelimiters &delimiters)
{
    const std::optional<ScriptValue> result = converted(value, wantedClass, delimiters);
    if (!result)
        throw ScriptError(u"Can’t make %1 into type %2."_s.arg(source(value), wantedClass),
                          ScriptError::BadCoercion);
    return *result;
}

QString ScriptCoercion::source(const ScriptValue &value)
{
    QString text;
    describe(value, text, 0);
    return text.size() > longestSource ? text.left(longestSource) + u'…' : text;
}

std::optional<QString> ScriptCoercion::resultText(const ScriptValue &value)
{
    return value.is<ScriptValue::List>() ? std::nullopt : text(value, {});
}
