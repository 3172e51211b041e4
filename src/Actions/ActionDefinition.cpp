// SPDX-License-Identifier: Apache-2.0
#include "Actions/ActionDefinition.h"

#include "Actions/Families/ApplicationActions.h"
#include "Actions/Families/ControlActions.h"
#include "Actions/Families/FileActions.h"
#include "Actions/Families/KeyboardActions.h"
#include "Actions/Families/ScreenActions.h"
#include "Actions/Families/ScriptActions.h"
#include "Actions/Families/TaskActions.h"
#include "Actions/Families/WebActions.h"

using namespace Qt::StringLiterals;

bool ActionDefinition::needsFocus(const AgentAction &action) const
{
    switch (focus) {
    case Focus::NotNeeded:
        return false;
    case Focus::Needed:
        return true;
    case Focus::NeededUnlessAppIsNamed:
        return !action.arg(u"app"_s);
    }
    Q_UNREACHABLE();
}

const ActionDefinition &definitionOf(ActionKind kind)
{
    switch (kind) {
    case ActionKind::OpenApp:
        return ApplicationActions::openApp;
    case ActionKind::FocusApp:
        return ApplicationActions::focusApp;
    case ActionKind::QuitApp:
        return ApplicationActions::quitApp;
    case ActionKind::OpenUrl:
        return WebActions::openUrl;
    case ActionKind::WebSearch:
        return WebActions::webSearch;
    case ActionKind::NewTab:
        return WebActions::newTab;
    case ActionKind::TypeText:
        return KeyboardActions::typeText;
    case ActionKind::PressKey:
        return KeyboardActions::pressKey;
    case ActionKind::Click:
        return ControlActions::click;
    case ActionKind::CreateFolder:
        return FileActions::createFolder;
    case ActionKind::Screenshot:
        return ScreenActions::screenshot;
    case ActionKind::FindFiles:
        return FileActions::findFiles;
    case ActionKind::OpenPath:
        return FileActions::openPath;
    case ActionKind::Trash:
        return FileActions::trash;
    case ActionKind::ListWindows:
        return ScreenActions::listWindows;
    case ActionKind::ReadUi:
        return ControlActions::readUi;
    case ActionKind::AppleScript:
        return ScriptActions::appleScript;
    case ActionKind::Done:
        return TaskActions::done;
    }
    Q_UNREACHABLE();
}

const ActionDefinition *definitionOf(const AgentAction &action)
{
    const std::optional<ActionKind> kind = kindOf(action);
    return kind ? &definitionOf(*kind) : nullptr;
}

std::optional<ActionKind> kindOf(const AgentAction &action)
{
    for (const ActionKind kind : allActionKinds) {
        if (definitionOf(kind).name == action.name)
            return kind;
    }
    return std::nullopt;
}
