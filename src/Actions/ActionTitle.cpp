// SPDX-License-Identifier: Apache-2.0
// The labels under which the user sees the actions.
#include "Actions/ActionKind.h"
#include "Base/Text.h"

using namespace Qt::StringLiterals;

namespace {

QString argument(const AgentAction &action, const QString &key, const QString &fallback = QString())
{
    return action.arg(key).value_or(fallback);
}

QString openApp(const AgentAction &action)
{
    return u"Launching "_s + argument(action, u"app"_s, u"app"_s);
}

QString quitApp(const AgentAction &action)
{
    return u"Closing "_s + argument(action, u"app"_s, u"app"_s);
}

QString openURL(const AgentAction &action)
{
    QString address = argument(action, u"url"_s);
    address.remove("https://"_L1).remove("http://"_L1);
    return u"Navigating to "_s + Text::trimmed(address, u"/");
}

QString webSearch(const AgentAction &action)
{
    return u"Searching for “%1”"_s.arg(argument(action, u"query"_s));
}

QString typeText(const AgentAction &action)
{
    return u"Typing “%1”"_s.arg(argument(action, u"text"_s));
}

QString pressKey(const AgentAction &action)
{
    const std::optional<QString> modifiers = action.arg(u"modifiers"_s);
    const QString held = modifiers ? *modifiers + u'+' : QString();
    return u"Pressing "_s + held + argument(action, u"key"_s);
}

QString click(const AgentAction &action)
{
    return u"Clicking “%1”"_s.arg(argument(action, u"label"_s));
}

QString createFolder(const AgentAction &action)
{
    return u"Creating folder “%1”"_s.arg(argument(action, u"name"_s));
}

QString findFiles(const AgentAction &action)
{
    return u"Searching "_s + argument(action, u"folder"_s, u"Downloads"_s);
}

QString openPath(const AgentAction &action)
{
    return u"Opening "_s + argument(action, u"path"_s);
}

QString trash(const AgentAction &action)
{
    return u"Moving “%1” to Trash"_s.arg(argument(action, u"path"_s));
}

QString titleOfUnknown(const QString &name)
{
    return Text::capitalized(QString(name).replace(u'_', u' '));
}

QString titleOf(ActionKind kind, const AgentAction &action)
{
    switch (kind) {
    case ActionKind::OpenApp:
        return openApp(action);
    case ActionKind::FocusApp:
        return titleOfUnknown(action.name);
    case ActionKind::QuitApp:
        return quitApp(action);
    case ActionKind::OpenUrl:
        return openURL(action);
    case ActionKind::WebSearch:
        return webSearch(action);
    case ActionKind::NewTab:
        return u"Opening new tab"_s;
    case ActionKind::TypeText:
        return typeText(action);
    case ActionKind::PressKey:
        return pressKey(action);
    case ActionKind::Click:
        return click(action);
    case ActionKind::CreateFolder:
        return createFolder(action);
    case ActionKind::Screenshot:
        return u"Taking a screenshot"_s;
    case ActionKind::FindFiles:
        return findFiles(action);
    case ActionKind::OpenPath:
        return openPath(action);
    case ActionKind::Trash:
        return trash(action);
    case ActionKind::ListWindows:
        return u"Looking at open windows"_s;
    case ActionKind::ReadUi:
        return u"Reading the interface"_s;
    case ActionKind::AppleScript:
        return u"Running AppleScript"_s;
    case ActionKind::Done:
        return u"Done"_s;
    }
    Q_UNREACHABLE();
}

} // namespace

QString AgentAction::title() const
{
    const std::optional<ActionKind> kind = kindOf(*this);
    return kind ? titleOf(*kind, *this) : titleOfUnknown(name);
}
