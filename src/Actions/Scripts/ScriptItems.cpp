// SPDX-License-Identifier: Apache-2.0
#include "Actions/Scripts/ScriptItems.h"

#include "Base/Text.h"
#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptElements.h"

#include <QRandomGenerator>

#include <algorithm>

using namespace Qt::StringLiterals;

using Form = ScriptObject::Form;

namespace {

ScriptValue shared(const ScriptObject &object)
{
    return std::make_shared<const ScriptObject>(object);
}

[[noreturn]] void failToGet(const ScriptObject &object)
{
    throw ScriptError(u"Can’t get %1."_s.arg(ScriptCoercion::source(shared(object))),
                      ScriptError::NoSuchObject);
}

ScriptItem named(const ScriptObject &element, const QList<ScriptItem> &items)
{
    const QString name = ScriptItems::textOf(element.key);
    const auto found = std::find_if(items.begin(), items.end(),
                                    [&](const ScriptItem &item) { return Text::equals(item.name, name); });
    if (found == items.end())
        failToGet(element);
    return *found;
}

qsizetype indexOf(const ScriptObject &element, const ScriptValue &key, qsizetype count)
{
    return ScriptElements::position(key, count, element.name, shared(*element.container));
}

ScriptItem single(const ScriptObject &element, const QList<ScriptItem> &items)
{
    if (element.key.is<QString>() || element.form == Form::Name)
        return named(element, items);
    if (element.form == Form::Index)
        return items.at(indexOf(element, element.key, items.size()));
    if (items.isEmpty() || element.form == Form::Identifier)
        failToGet(element);
    const qsizetype any = QRandomGenerator::global()->bounded(items.size());
    return items.at(element.form == Form::Middle ? (items.size() - 1) / 2 : any);
}

bool selectsSeveral(const ScriptObject &element)
{
    return element.form == Form::Every || element.form == Form::Range;
}

// A reference by name, which stays valid when others come and go.
ScriptValue referenceTo(const ScriptItem &item, const ScriptObject &element)
{
    ScriptObject object = element;
    object.form = Form::Name;
    object.key = item.name;
    object.lastKey = {};
    object.isValue = true;
    return shared(object);
}

ScriptValue propertyOf(const ScriptItem &item, const ScriptObject &property)
{
    const auto value = item.properties.constFind(property.name);
    if (value != item.properties.cend())
        return *value;
    if (property.name == "name"_L1 || property.name == "title"_L1 || property.name == "displayed name"_L1)
        return item.name;
    failToGet(property);
}

// The value of the element, or of its property.
ScriptValue valueOf(const ScriptObject &object, const ScriptObject &element, const QList<ScriptItem> &items)
{
    const bool isProperty = object.kind == ScriptObject::Kind::Property;
    QList<ScriptValue> values;
    for (const ScriptItem &item : ScriptItems::selected(element, items))
        values.append(isProperty ? propertyOf(item, object) : referenceTo(item, element));
    return selectsSeveral(element) ? ScriptValue::list(values) : values.first();
}

bool exists(const ScriptObject &element, const QList<ScriptItem> &items)
{
    try {
        return !ScriptItems::selected(element, items).isEmpty();
    } catch (const ScriptError &) {
        return false;
    }
}

} // namespace

QList<ScriptItem> ScriptItems::selected(const ScriptObject &element, const QList<ScriptItem> &items)
{
    if (element.form == Form::Every)
        return items;
    if (element.form != Form::Range)
        return {single(element, items)};
    const qsizetype first = indexOf(element, element.key, items.size());
    const qsizetype last = indexOf(element, element.lastKey, items.size());
    return items.mid(std::min(first, last), std::abs(last - first) + 1);
}

QCoro::Task<std::optional<ScriptValue>> ScriptItems::perform(ScriptCommand command, Provider provider,
                                                             Desktop desktop)
{
    std::optional<ScriptValue> answer;
    const ScriptValue::Object object = objectOf(command);
    const bool isGet = command.name == "get"_L1;
    if (!object || (!isGet && command.name != "exists"_L1))
        co_return answer;
    const bool isProperty = object->kind == ScriptObject::Kind::Property;
    const ScriptValue::Object element = isProperty ? object->container : object;
    if (!element || element->kind != ScriptObject::Kind::Element)
        co_return answer;
    const std::optional<QList<ScriptItem>> items = co_await provider(element, desktop);
    if (!items)
        co_return answer;
    if (isGet)
        answer = valueOf(*object, *element, *items);
    else
        answer = ScriptValue(exists(*element, *items));
    co_return answer;
}

ScriptValue::Object ScriptItems::objectOf(const ScriptCommand &command)
{
    const bool isObject = command.direct && command.direct->is<ScriptValue::Object>();
    return isObject ? command.direct->as<ScriptValue::Object>() : nullptr;
}

bool ScriptItems::isApplication(const ScriptObject &object)
{
    return object.kind == ScriptObject::Kind::Application;
}

QString ScriptItems::textOf(const ScriptValue &value)
{
    return ScriptCoercion::to(value, u"text"_s, {}).as<QString>();
}
