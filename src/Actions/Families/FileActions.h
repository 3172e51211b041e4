// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Actions/AgentAction.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// The actions "create_folder", "find_files", "open_path" and "trash". Each is carried out on its target and
// gives the result line; `Executor::run` says what may be thrown. A title is what the user sees of it.
namespace FileActions {

QCoro::Task<QString> createFolder(AgentAction action, ActionTarget target, Desktop desktop);
QString createFolderTitle(const AgentAction &action);
QCoro::Task<QString> findFiles(AgentAction action, ActionTarget target, Desktop desktop);
QString findFilesTitle(const AgentAction &action);
QCoro::Task<QString> openPath(AgentAction action, ActionTarget target, Desktop desktop);
QString openPathTitle(const AgentAction &action);
QCoro::Task<QString> trash(AgentAction action, ActionTarget target, Desktop desktop);
QString trashTitle(const AgentAction &action);

} // namespace FileActions
