// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/Notifications.h"

#include "Scripting/Values/ScriptCoercion.h"

using namespace Qt::StringLiterals;

namespace {

const QString failure = u"The desktop shows no notifications."_s;
constexpr int standardDuration = -1;

ScriptBus::Partner service()
{
    return {u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
            u"org.freedesktop.Notifications"_s};
}

QString textOf(const ScriptValue &value)
{
    return ScriptCoercion::text(value, {}).value_or(QString());
}

// The subtitle stands above the text.
QString bodyOf(const ScriptCommand &command)
{
    const QString subtitle = textOf(command.parameter(u"subtitle"_s));
    const QString text = textOf(command.direct.value_or(ScriptValue()));
    return subtitle.isEmpty() ? text : subtitle + u'\n' + text;
}

} // namespace

QCoro::Task<std::optional<ScriptValue>> Notifications::perform(ScriptCommand command)
{
    std::optional<ScriptValue> answer;
    if (command.name != "display notification"_L1)
        co_return answer;
    const QString title = textOf(command.parameter(u"with title"_s));
    QString body = bodyOf(command);
    const bool isMarkup = co_await understandsMarkup();
    if (isMarkup)
        body = body.toHtmlEscaped();
    const QVariantList arguments{u"Orvane"_s,
                                 0U,
                                 u"org.orvane.Orvane"_s,
                                 title.isEmpty() ? u"Orvane"_s : title,
                                 body,
                                 QStringList(),
                                 QVariantMap(),
                                 standardDuration};
    co_await m_bus.call(service(), u"Notify"_s, arguments, failure);
    answer = ScriptValue();
    co_return answer;
}

// Such a service would take "<b>" in a text for its own.
QCoro::Task<bool> Notifications::understandsMarkup()
{
    const QVariantList values = co_await m_bus.call(service(), u"GetCapabilities"_s, {}, failure);
    co_return values.value(0).toStringList().contains(u"body-markup"_s);
}
