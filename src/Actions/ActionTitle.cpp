// SPDX-License-Identifier: Apache-2.0
// The labels under which the user sees the actions.
#include "Actions/AgentAction.h"
#include "Base/Text.h"

#include <QHash>

#include <utility>

namespace {

using Title = QString (*)(const AgentAction &action);

QString argument(const AgentAction &action, const QString &key, const QString &fallback = QString())
{
    return action.arg(key).value_or(fallback);
}

QString openApp(const AgentAction &action)
{
    return QStringLiteral("Launching ") + argument(action, QStringLiteral("app"), QStringLiteral("app"));
}

QString quitApp(const AgentAction &action)
{
    return QStringLiteral("Closing ") + argument(action, QStringLiteral("app"), QStringLiteral("app"));
}

QString openURL(const AgentAction &action)
{
    QString address = argument(action, QStringLiteral("url"));
    address.remove(QLatin1String("https://")).remove(QLatin1String("http://"));
    return QStringLiteral("Navigating to ") + Text::trimmed(address, u"/");
}

QString webSearch(const AgentAction &action)
{
    return QStringLiteral("Searching for “%1”").arg(argument(action, QStringLiteral("query")));
}

QString typeText(const AgentAction &action)
{
    return QStringLiteral("Typing “%1”").arg(argument(action, QStringLiteral("text")));
}

QString pressKey(const AgentAction &action)
{
    const std::optional<QString> modifiers = action.arg(QStringLiteral("modifiers"));
    const QString held = modifiers ? *modifiers + u'+' : QString();
    return QStringLiteral("Pressing ") + held + argument(action, QStringLiteral("key"));
}

QString click(const AgentAction &action)
{
    return QStringLiteral("Clicking “%1”").arg(argument(action, QStringLiteral("label")));
}

QString createFolder(const AgentAction &action)
{
    return QStringLiteral("Creating folder “%1”").arg(argument(action, QStringLiteral("name")));
}

QString findFiles(const AgentAction &action)
{
    return QStringLiteral("Searching ") +
           argument(action, QStringLiteral("folder"), QStringLiteral("Downloads"));
}

QString openPath(const AgentAction &action)
{
    return QStringLiteral("Opening ") + argument(action, QStringLiteral("path"));
}

QString trash(const AgentAction &action)
{
    return QStringLiteral("Moving “%1” to Trash").arg(argument(action, QStringLiteral("path")));
}

const QHash<QString, Title> &titlesWithArguments()
{
    static const QHash<QString, Title> titles{
        {QStringLiteral("open_app"), openApp},     {QStringLiteral("quit_app"), quitApp},
        {QStringLiteral("open_url"), openURL},     {QStringLiteral("web_search"), webSearch},
        {QStringLiteral("type_text"), typeText},   {QStringLiteral("press_key"), pressKey},
        {QStringLiteral("click"), click},          {QStringLiteral("create_folder"), createFolder},
        {QStringLiteral("find_files"), findFiles}, {QStringLiteral("open_path"), openPath},
        {QStringLiteral("trash"), trash},
    };
    return titles;
}

const QHash<QString, QString> &fixedTitles()
{
    static const QHash<QString, QString> titles{
        {QStringLiteral("new_tab"), QStringLiteral("Opening new tab")},
        {QStringLiteral("screenshot"), QStringLiteral("Taking a screenshot")},
        {QStringLiteral("list_windows"), QStringLiteral("Looking at open windows")},
        {QStringLiteral("read_ui"), QStringLiteral("Reading the interface")},
        {QStringLiteral("applescript"), QStringLiteral("Running AppleScript")},
        {QStringLiteral("done"), QStringLiteral("Done")},
    };
    return titles;
}

QString titleOfUnknown(const QString &name)
{
    return Text::capitalized(QString(name).replace(u'_', u' '));
}

} // namespace

QString AgentAction::title() const
{
    const Title format = titlesWithArguments().value(name, nullptr);
    if (format)
        return format(*this);
    const auto fixed = fixedTitles().constFind(name);
    return fixed != fixedTitles().constEnd() ? *fixed : titleOfUnknown(name);
}
