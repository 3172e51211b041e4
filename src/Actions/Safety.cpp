// SPDX-License-Identifier: Apache-2.0
#include "Actions/Safety.h"

#include "Base/PlatformWords.h"
#include "Base/Text.h"

#include <QHash>
#include <QStringList>

#include <algorithm>

namespace {

using Rule = Risk (*)(const AgentAction &action, const ActionTarget &target);

const QStringList &messagingApplications()
{
    static const QStringList names{
        QStringLiteral("messages"), QStringLiteral("mail"),     QStringLiteral("slack"),
        QStringLiteral("discord"),  QStringLiteral("telegram"), QStringLiteral("whatsapp"),
        QStringLiteral("outlook"),  QStringLiteral("teams"),    QStringLiteral("signal"),
    };
    return names;
}

const QStringList &riskyClickWords()
{
    static const QStringList words{
        QStringLiteral("send"),          QStringLiteral("delete"),   QStringLiteral("remove"),
        QStringLiteral("buy"),           QStringLiteral("purchase"), QStringLiteral("pay"),
        QStringLiteral("place order"),   QStringLiteral("checkout"), QStringLiteral("submit"),
        QStringLiteral("confirm order"), QStringLiteral("erase"),    QStringLiteral("empty trash"),
        QStringLiteral("transfer"),
    };
    return words;
}

bool containsAny(const QString &key, const QStringList &words)
{
    return std::any_of(words.begin(), words.end(),
                       [&key](const QString &word) { return key.contains(word); });
}

QString keyOfArgument(const AgentAction &action, const QString &name)
{
    return Text::comparisonKey(action.arg(name).value_or(QString()));
}

// The frontmost application's name as it is; empty when there is none.
QString frontName(const ActionTarget &target)
{
    return target.frontmost ? target.frontmost->localizedName.value_or(QString()) : QString();
}

QString frontDisplay(const ActionTarget &target)
{
    return Text::capitalized(frontName(target));
}

bool isQuitSafe(const QString &name)
{
    return Safety::quitSafe().contains(Text::comparisonKey(name));
}

bool isRiskyLabel(const QString &label)
{
    return containsAny(Text::comparisonKey(label), riskyClickWords());
}

Risk trash(const AgentAction &action, const ActionTarget &)
{
    const QString path = action.arg(QStringLiteral("path")).value_or(QStringLiteral("item"));
    return Risk::confirm(QStringLiteral("Move “%1” to the Trash").arg(path));
}

Risk quitApp(const AgentAction &action, const ActionTarget &target)
{
    const QString word = action.arg(QStringLiteral("app")).value_or(QString());
    const QString name = target.quitting ? target.quitting->localizedName.value_or(QString()) : word;
    const QString english = target.quitting ? target.quitting->otherNames.english : QString();
    if (isQuitSafe(word) && (isQuitSafe(name) || isQuitSafe(english)))
        return Risk::safe();
    QString shown = word.isEmpty() ? QStringLiteral("the app") : word;
    if (!name.isEmpty() && !Text::equals(word, name))
        shown += QStringLiteral(" (%1)").arg(name);
    return Risk::confirm(QStringLiteral("Quit %1 — unsaved work could be lost").arg(shown));
}

Risk appleScript(const AgentAction &action, const ActionTarget &)
{
    const QString script = action.arg(QStringLiteral("script")).value_or(QString());
    return Risk::confirm(QStringLiteral("Run a custom AppleScript:\n") + script);
}

Risk click(const AgentAction &action, const ActionTarget &target)
{
    const QString label = action.arg(QStringLiteral("label")).value_or(QString());
    const QString found = target.control ? target.control->label : label;
    if (!isRiskyLabel(label) && !isRiskyLabel(found))
        return Risk::safe();
    QString shown = QStringLiteral("“%1”").arg(label);
    if (!Text::equals(label, found))
        shown += QStringLiteral(" (“%1”)").arg(found);
    return Risk::confirm(QStringLiteral("Click %1 in %2").arg(shown, frontDisplay(target)));
}

Risk pressKey(const AgentAction &action, const ActionTarget &target)
{
    const QString key = keyOfArgument(action, QStringLiteral("key"));
    const bool isReturn = key == QLatin1String("return") || key == QLatin1String("enter");
    if (isReturn && containsAny(Text::comparisonKey(frontName(target)), messagingApplications()))
        return Risk::confirm(
            QStringLiteral("Press Return in %1 — this may send a message").arg(frontDisplay(target)));
    if (!keyOfArgument(action, QStringLiteral("modifiers")).contains(QLatin1String("command")))
        return Risk::safe();
    if (key == QLatin1String("delete") || key == QLatin1String("backspace"))
        return Risk::confirm(
            QStringLiteral("Delete the selected item (%1)").arg(PlatformWords::current().deleteKeys));
    if (key == QLatin1String("q"))
        return Risk::confirm(
            QStringLiteral("Quit %1 (%2)").arg(frontDisplay(target), PlatformWords::current().quitKeys));
    return Risk::safe();
}

Risk openURL(const AgentAction &action, const ActionTarget &)
{
    const QString url = keyOfArgument(action, QStringLiteral("url"));
    if (url.startsWith(QLatin1String("x-apple.systempreferences")) && url.contains(QLatin1String("reset")))
        return Risk::confirm(QStringLiteral("Modify system settings"));
    return Risk::safe();
}

Rule ruleFor(const QString &actionName)
{
    static const QHash<QString, Rule> rules{
        {QStringLiteral("trash"), trash},
        {QStringLiteral("quit_app"), quitApp},
        {QStringLiteral("applescript"), appleScript},
        {QStringLiteral("click"), click},
        {QStringLiteral("press_key"), pressKey},
        {QStringLiteral("open_url"), openURL},
    };
    return rules.value(actionName, nullptr);
}

} // namespace

const QSet<QString> &Safety::quitSafe()
{
    static const QSet<QString> names{
        QStringLiteral("spotify"),         QStringLiteral("music"),
        QStringLiteral("podcasts"),        QStringLiteral("tv"),
        QStringLiteral("calculator"),      QStringLiteral("maps"),
        QStringLiteral("photos"),          QStringLiteral("news"),
        QStringLiteral("stocks"),          QStringLiteral("weather"),
        QStringLiteral("chess"),           QStringLiteral("preview"),
        QStringLiteral("system settings"), QStringLiteral("activity monitor"),
    };
    return names;
}

Risk Safety::assess(const AgentAction &action, const ActionTarget &target)
{
    const Rule rule = ruleFor(action.name);
    return rule ? rule(action, target) : Risk::safe();
}

Risk Safety::assess(const AgentAction &action, const std::optional<QString> &frontmostApplicationName)
{
    ActionTarget target;
    target.frontmost.emplace().localizedName = frontmostApplicationName;
    return assess(action, target);
}

QCoro::Task<Risk> Safety::assess(AgentAction action, Desktop desktop)
{
    const ActionTarget target = co_await Executor::target(action, desktop);
    co_return assess(action, target);
}
