// SPDX-License-Identifier: Apache-2.0
#include "Actions/Safety.h"

#include "Actions/ActionKind.h"
#include "Base/PlatformWords.h"
#include "Base/Text.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Rule = Risk (*)(const AgentAction &action, const ActionTarget &target);

const QStringList &messagingApplications()
{
    static const QStringList names{
        u"messages"_s, u"mail"_s,    u"slack"_s, u"discord"_s, u"telegram"_s,
        u"whatsapp"_s, u"outlook"_s, u"teams"_s, u"signal"_s,
    };
    return names;
}

const QStringList &riskyClickWords()
{
    static const QStringList words{
        u"send"_s,  u"delete"_s,      u"remove"_s,   u"buy"_s,    u"purchase"_s,
        u"pay"_s,   u"place order"_s, u"checkout"_s, u"submit"_s, u"confirm order"_s,
        u"erase"_s, u"empty trash"_s, u"transfer"_s,
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

// The frontmost application's unmodified name, or empty.
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
    const QString path = action.arg(u"path"_s).value_or(u"item"_s);
    return Risk::confirm(u"Move “%1” to the Trash"_s.arg(path));
}

Risk quitApp(const AgentAction &action, const ActionTarget &target)
{
    const QString word = action.arg(u"app"_s).value_or(QString());
    const QString name = target.quitting ? target.quitting->localizedName.value_or(QString()) : word;
    const QString english = target.quitting ? target.quitting->otherNames.english : QString();
    if (isQuitSafe(word) && (isQuitSafe(name) || isQuitSafe(english)))
        return Risk::safe();
    QString shown = word.isEmpty() ? u"the app"_s : word;
    if (!name.isEmpty() && !Text::equals(word, name))
        shown += u" (%1)"_s.arg(name);
    return Risk::confirm(u"Quit %1 — unsaved work could be lost"_s.arg(shown));
}

Risk appleScript(const AgentAction &action, const ActionTarget &)
{
    const QString script = action.arg(u"script"_s).value_or(QString());
    return Risk::confirm(u"Run a custom AppleScript:\n"_s + script);
}

Risk click(const AgentAction &action, const ActionTarget &target)
{
    const QString label = action.arg(u"label"_s).value_or(QString());
    const QString found = target.control ? target.control->label : label;
    if (!isRiskyLabel(label) && !isRiskyLabel(found))
        return Risk::safe();
    QString shown = u"“%1”"_s.arg(label);
    if (!Text::equals(label, found))
        shown += u" (“%1”)"_s.arg(found);
    return Risk::confirm(u"Click %1 in %2"_s.arg(shown, frontDisplay(target)));
}

Risk pressKey(const AgentAction &action, const ActionTarget &target)
{
    const QString key = keyOfArgument(action, u"key"_s);
    const bool isReturn = key == "return"_L1 || key == "enter"_L1;
    if (isReturn && containsAny(Text::comparisonKey(frontName(target)), messagingApplications()))
        return Risk::confirm(u"Press Return in %1 — this may send a message"_s.arg(frontDisplay(target)));
    if (!keyOfArgument(action, u"modifiers"_s).contains("command"_L1))
        return Risk::safe();
    if (key == "delete"_L1 || key == "backspace"_L1)
        return Risk::confirm(u"Delete the selected item (%1)"_s.arg(PlatformWords::current().deleteKeys));
    if (key == "q"_L1)
        return Risk::confirm(u"Quit %1 (%2)"_s.arg(frontDisplay(target), PlatformWords::current().quitKeys));
    return Risk::safe();
}

Risk openURL(const AgentAction &action, const ActionTarget &)
{
    const QString url = keyOfArgument(action, u"url"_s);
    if (url.startsWith("x-apple.systempreferences"_L1) && url.contains("reset"_L1))
        return Risk::confirm(u"Modify system settings"_s);
    return Risk::safe();
}

// Null for actions that never need confirmation.
Rule ruleFor(ActionKind kind)
{
    switch (kind) {
    case ActionKind::Trash:
        return trash;
    case ActionKind::QuitApp:
        return quitApp;
    case ActionKind::AppleScript:
        return appleScript;
    case ActionKind::Click:
        return click;
    case ActionKind::PressKey:
        return pressKey;
    case ActionKind::OpenUrl:
        return openURL;
    case ActionKind::OpenApp:
    case ActionKind::FocusApp:
    case ActionKind::WebSearch:
    case ActionKind::NewTab:
    case ActionKind::TypeText:
    case ActionKind::CreateFolder:
    case ActionKind::Screenshot:
    case ActionKind::FindFiles:
    case ActionKind::OpenPath:
    case ActionKind::ListWindows:
    case ActionKind::ReadUi:
    case ActionKind::Done:
        return nullptr;
    }
    Q_UNREACHABLE();
}

} // namespace

const QSet<QString> &Safety::quitSafe()
{
    static const QSet<QString> names{
        u"spotify"_s,         u"music"_s,
        u"podcasts"_s,        u"tv"_s,
        u"calculator"_s,      u"maps"_s,
        u"photos"_s,          u"news"_s,
        u"stocks"_s,          u"weather"_s,
        u"chess"_s,           u"preview"_s,
        u"system settings"_s, u"activity monitor"_s,
    };
    return names;
}

Risk Safety::assess(const AgentAction &action, const ActionTarget &target)
{
    const std::optional<ActionKind> kind = kindOf(action);
    const Rule rule = kind ? ruleFor(*kind) : nullptr;
    return rule ? rule(action, target) : Risk::safe();
}

QCoro::Task<Risk> Safety::assess(AgentAction action, Desktop desktop)
{
    const ActionTarget target = co_await ActionTarget::find(action, desktop);
    co_return assess(action, target);
}
