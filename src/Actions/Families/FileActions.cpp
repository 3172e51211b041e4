// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/FileActions.h"

#include "Actions/ActionError.h"
#include "Actions/Arguments.h"
#include "Actions/Operations/Files.h"
#include "Actions/Operations/Locations.h"

using namespace Qt::StringLiterals;

QCoro::Task<QString> FileActions::createFolder(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString name = Arguments::required(action, u"name"_s, u"folder name"_s);
    const QString location = Arguments::firstOf(action, u"in"_s, u"location"_s, u"Desktop"_s);
    const QString parent = co_await Executor::locate(location, desktop);
    const QString path = Executor::pathInside(parent, name);
    co_await desktop.files.createDirectory(path);
    co_await desktop.workspace.reveal(path);
    co_return u"Created folder at %1."_s.arg(path);
}

QString FileActions::createFolderTitle(const AgentAction &action)
{
    return u"Creating folder “%1”"_s.arg(Arguments::shown(action, u"name"_s));
}

QCoro::Task<QString> FileActions::findFiles(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString folder = action.arg(u"folder"_s).value_or(u"Downloads"_s);
    std::optional<QString> extension = action.arg(u"extension"_s);
    if (!extension)
        extension = action.arg(u"type"_s);
    co_return co_await Executor::findFiles(folder, extension, action.arg(u"query"_s), desktop);
}

QString FileActions::findFilesTitle(const AgentAction &action)
{
    return u"Searching "_s + Arguments::shown(action, u"folder"_s, u"Downloads"_s);
}

QCoro::Task<QString> FileActions::openPath(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString text = Arguments::required(action, u"path"_s, u"path"_s);
    const QString path = co_await Executor::locate(text, desktop);
    const bool exists = co_await desktop.files.exists(path);
    if (!exists)
        throw ActionError(u"Nothing exists at %1."_s.arg(text));
    // Whether an application took it is not told: the next observation shows it.
    const QUrl location = QUrl::fromLocalFile(path);
    co_await desktop.workspace.open(location);
    co_return u"Opened %1."_s.arg(Executor::lastComponent(path));
}

QString FileActions::openPathTitle(const AgentAction &action)
{
    return u"Opening "_s + Arguments::shown(action, u"path"_s);
}

QCoro::Task<QString> FileActions::trash(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString text = Arguments::required(action, u"path"_s, u"path"_s);
    const QString path = co_await Executor::locate(text, desktop);
    co_await desktop.files.trash(path);
    co_return u"Moved %1 to the Trash."_s.arg(Executor::lastComponent(path));
}

QString FileActions::trashTitle(const AgentAction &action)
{
    return u"Moving “%1” to Trash"_s.arg(Arguments::shown(action, u"path"_s));
}
