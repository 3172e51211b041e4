// SPDX-License-Identifier: Apache-2.0
#include "Actions/Scripts/StandardAdditions.h"

#include "Actions/Operations/Browsing.h"
#include "Actions/Operations/FileSearch.h"
#include "Actions/Scripts/ScriptDialogs.h"
#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

// A shell line or program text in a script is too easy to misread when the script is shown for approval.
void requireNoProgram(const ScriptCommand &command)
{
    static const QStringList refused{u"do shell script"_s, u"do script"_s, u"run script"_s,
                                     u"load script"_s,     u"execute"_s,   u"do javascript"_s};
    if (refused.contains(command.name))
        throw ScriptError(
            u"Scripts can't run shell commands or other programs' code (“%1”)."_s.arg(command.name));
}

void requireNoFileDialog(const ScriptCommand &command)
{
    if (command.name == u"choose file" || command.name == u"choose folder")
        throw ScriptError(u"Scripts can't ask for files on this computer (“%1”)."_s.arg(command.name));
}

// In the words of FileSearch::locate.
QString locationOf(const QString &folder)
{
    static const QHash<QString, QString> folders{
        {u"desktop"_s, u"Desktop"_s},
        {u"desktop folder"_s, u"Desktop"_s},
        {u"documents folder"_s, u"Documents"_s},
        {u"downloads folder"_s, u"Downloads"_s},
        {u"music folder"_s, u"Music"_s},
        {u"pictures folder"_s, u"Pictures"_s},
        {u"movies folder"_s, u"Videos"_s},
        {u"home folder"_s, u"~"_s},
        {u"home"_s, u"~"_s},
    };
    return folders.value(folder);
}

QCoro::Task<ScriptValue> pathTo(ScriptCommand command, Desktop desktop)
{
    const ScriptValue wanted = command.direct.value_or(ScriptValue());
    const QString name = ScriptCoercion::text(wanted, {}).value_or(QString()).toLower();
    if (name.startsWith("temporary items"_L1))
        co_return ScriptFile{QDir::tempPath()};
    const QString location = locationOf(name);
    if (location.isEmpty())
        throw ScriptError(u"The folder “%1” isn't known on this computer."_s.arg(name),
                          ScriptError::NoSuchObject);
    const QString path = co_await FileSearch::locate(location, desktop);
    co_return ScriptFile{path};
}

} // namespace

QCoro::Task<std::optional<ScriptValue>> StandardAdditions::perform(ScriptCommand command, Desktop desktop)
{
    requireNoProgram(command);
    requireNoFileDialog(command);
    std::optional<ScriptValue> answer;
    if (command.name == "current date"_L1) {
        answer = ScriptValue::date(desktop.clock.now());
    } else if (command.name == "path to"_L1) {
        answer = co_await pathTo(command, desktop);
    } else if (command.name == "open location"_L1) {
        const ScriptValue address = command.direct.value_or(ScriptValue());
        const ScriptValue text = ScriptCoercion::to(address, u"text"_s, {});
        // In `tell application "Firefox"`, with that browser.
        const bool hasBrowser = command.application && *command.application != u"System Events" &&
                                *command.application != u"Finder";
        const std::optional<QString> browser = hasBrowser ? command.application : std::nullopt;
        co_await Browsing::openURL(text.as<QString>(), browser, desktop);
        answer = ScriptValue();
    } else {
        answer = co_await ScriptDialogs::perform(command, desktop);
    }
    co_return answer;
}
