// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/FileActions.h"

#include "Actions/ActionError.h"
#include "Actions/Arguments.h"
#include "Actions/Operations/FileSearch.h"
#include "Actions/Operations/Locations.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<QString> runCreateFolder(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString name = Arguments::required(action, u"name"_s, u"folder name"_s);
    const QString location = Arguments::firstOf(action, u"in"_s, u"location"_s, u"Desktop"_s);
    const QString parent = co_await FileSearch::locate(location, desktop);
    const QString path = Locations::pathInside(parent, name);
    co_await desktop.files.createDirectory(path);
    co_await desktop.workspace.reveal(path);
    co_return u"Created folder at %1."_s.arg(path);
}

QString createFolderTitle(const AgentAction &action)
{
    return u"Creating folder “%1”"_s.arg(Arguments::shown(action, u"name"_s));
}

QCoro::Task<QString> runFindFiles(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString folder = action.arg(u"folder"_s).value_or(u"Downloads"_s);
    std::optional<QString> extension = action.arg(u"extension"_s);
    if (!extension)
        extension = action.arg(u"type"_s);
    co_return co_await FileSearch::findFiles(folder, extension, action.arg(u"query"_s), desktop);
}

QString findFilesTitle(const AgentAction &action)
{
    return u"Searching "_s + Arguments::shown(action, u"folder"_s, u"Downloads"_s);
}

QCoro::Task<QString> runOpenPath(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString text = Arguments::required(action, u"path"_s, u"path"_s);
    const QString path = co_await FileSearch::locate(text, desktop);
    const bool exists = co_await desktop.files.exists(path);
    if (!exists)
        throw ActionError(u"Nothing exists at %1."_s.arg(text));
    // The result is ignored: the next observation shows the effect.
    const QString url = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    co_await desktop.workspace.open(url);
    co_return u"Opened %1."_s.arg(Locations::lastComponent(path));
}

QString openPathTitle(const AgentAction &action)
{
    return u"Opening "_s + Arguments::shown(action, u"path"_s);
}

QCoro::Task<QString> runTrash(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString text = Arguments::required(action, u"path"_s, u"path"_s);
    const QString path = co_await FileSearch::locate(text, desktop);
    co_await desktop.files.trash(path);
    co_return u"Moved %1 to the Trash."_s.arg(Locations::lastComponent(path));
}

QString trashTitle(const AgentAction &action)
{
    return u"Moving “%1” to Trash"_s.arg(Arguments::shown(action, u"path"_s));
}

} // namespace

constinit const ActionDefinition FileActions::createFolder{
    .name = u"create_folder",
    .title = &createFolderTitle,
    .run = &runCreateFolder,
    .reach = ActionDefinition::Reach::FilesAlone,
};

constinit const ActionDefinition FileActions::findFiles{
    .name = u"find_files",
    .title = &findFilesTitle,
    .run = &runFindFiles,
    .reach = ActionDefinition::Reach::FilesAlone,
};

constinit const ActionDefinition FileActions::openPath{
    .name = u"open_path",
    .title = &openPathTitle,
    .run = &runOpenPath,
};

constinit const ActionDefinition FileActions::trash{
    .name = u"trash",
    .title = &trashTitle,
    .run = &runTrash,
    .reach = ActionDefinition::Reach::FilesAlone,
};
