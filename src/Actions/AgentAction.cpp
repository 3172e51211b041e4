// SPDX-License-Identifier: Apache-2.0
#include "Actions/AgentAction.h"

#include "Base/Text.h"

#include <QHash>
#include <QLocale>
#include <QStringEncoder>

#include <nlohmann/json.hpp>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Json = nlohmann::json;

// Deeper nesting is only an attempt to exhaust the stack.
constexpr int deepestNesting = 512;

// Integers below this are written out; above, their digits would be inexact.
constexpr double largestWrittenOut = 1e21;

// The text from the first opening brace to its closing one, ignoring braces in strings.
std::optional<QString> firstObject(const QString &text)
{
    const qsizetype start = text.indexOf(u'{');
    if (start < 0)
        return std::nullopt;
    int depth = 0;
    bool insideString = false;
    for (qsizetype i = start; i < text.size(); ++i) {
        const QChar character = text.at(i);
        if (insideString && character == u'\\')
            ++i;
        else if (character == u'"')
            insideString = !insideString;
        else if (!insideString && character == u'{')
            ++depth;
        else if (!insideString && character == u'}' && --depth == 0)
            return text.mid(start, i - start + 1);
    }
    return std::nullopt;
}

// Returns nothing if the object is not strictly valid or is nested too deeply.
std::optional<Json> decodedObject(const QString &text)
{
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    const QByteArray bytes = encoder.encode(text);
    if (encoder.hasError())
        return std::nullopt;
    bool tooDeep = false;
    const Json::parser_callback_t guard = [&tooDeep](int depth, Json::parse_event_t, Json &) {
        tooDeep = tooDeep || depth > deepestNesting;
        return !tooDeep;
    };
    Json object = Json::parse(bytes.begin(), bytes.end(), guard, false);
    if (tooDeep || !object.is_object())
        return std::nullopt;
    return object;
}

QString textOf(const Json &string)
{
    return QString::fromStdString(string.get_ref<const std::string &>());
}

QString textOfNumber(double number)
{
    const bool writtenOut = std::trunc(number) == number && std::abs(number) < largestWrittenOut;
    // Adding zero turns "-0" into "0".
    return writtenOut ? QString::number(number + 0.0, 'f', 0)
                      : QString::number(number, 'g', QLocale::FloatingPointShortest);
}

std::optional<QString> joined(const Json &array)
{
    QStringList texts;
    for (const Json &element : array) {
        if (!element.is_string())
            return std::nullopt;
        texts.append(textOf(element));
    }
    return texts.join(u'+');
}

// A member's value as an argument's text, or nothing if its type has none.
std::optional<QString> flattened(const Json &value)
{
    switch (value.type()) {
    case Json::value_t::string:
        return textOf(value);
    case Json::value_t::boolean:
        return value.get<bool>() ? u"1"_s : u"0"_s;
    case Json::value_t::number_integer:
        return QString::number(value.get<qint64>());
    case Json::value_t::number_unsigned:
        return QString::number(value.get<quint64>());
    case Json::value_t::number_float:
        return textOfNumber(value.get<double>());
    case Json::value_t::array:
        return joined(value);
    default:
        return std::nullopt;
    }
}

// The key that names the action: the first of the three that is present, whatever its value.
const char *namingKey(const Json &object)
{
    for (const char *key : {"action", "name", "tool"}) {
        if (object.contains(key))
            return key;
    }
    return nullptr;
}

// Moves the members of a nested argument object to the top level, without overwriting existing members. The
// nested object stays as null under its key.
void mergeNestedArguments(Json &object)
{
    for (const char *key : {"args", "parameters"}) {
        const auto nested = object.find(key);
        if (nested == object.end() || !nested->is_object())
            continue;
        Json arguments = std::move(*nested);
        for (auto member = arguments.begin(); member != arguments.end(); ++member)
            object.emplace(member.key(), std::move(member.value()));
        return;
    }
}

// If another key names the action, "name" is an ordinary argument (such as a new folder's name).
bool isArgument(const std::string &key, const std::string &naming)
{
    return key != naming && key != "action" && key != "tool";
}

} // namespace

std::optional<AgentAction> AgentAction::parse(const QString &text)
{
    const std::optional<QString> source = firstObject(text);
    std::optional<Json> object = source ? decodedObject(*source) : std::nullopt;
    const char *naming = object ? namingKey(*object) : nullptr;
    if (!naming || !object->at(naming).is_string())
        return std::nullopt;
    AgentAction action;
    action.name = textOf(object->at(naming)).toLower();
    mergeNestedArguments(*object);
    for (const auto &[key, value] : object->items()) {
        const std::optional<QString> argument = isArgument(key, naming) ? flattened(value) : std::nullopt;
        if (argument)
            action.args.insert(QString::fromStdString(key), *argument);
    }
    action.id = QUuid::createUuid();
    return action;
}

std::optional<QString> AgentAction::arg(const QString &key) const
{
    const QString value = Text::trimmed(args.value(key));
    return value.isEmpty() ? std::nullopt : std::optional(value);
}
