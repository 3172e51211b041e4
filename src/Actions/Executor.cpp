// SPDX-License-Identifier: Apache-2.0
#include "Actions/Executor.h"

#include "Actions/ActionKind.h"
#include "Actions/Families/ApplicationActions.h"
#include "Actions/Families/ControlActions.h"
#include "Actions/Families/FileActions.h"
#include "Actions/Families/KeyboardActions.h"
#include "Actions/Families/ScreenActions.h"
#include "Actions/Families/ScriptActions.h"
#include "Actions/Families/WebActions.h"
#include "Actions/Session.h"
#include "Base/Text.h"

using namespace Qt::StringLiterals;

namespace {

using Handler = QCoro::Task<QString> (*)(AgentAction action, ActionTarget target, Desktop desktop);

// None for what is not carried out on the desktop.
Handler handlerOf(ActionKind kind)
{
    switch (kind) {
    case ActionKind::OpenApp:
    case ActionKind::FocusApp:
        return ApplicationActions::openApp;
    case ActionKind::QuitApp:
        return ApplicationActions::quitApp;
    case ActionKind::OpenUrl:
        return WebActions::openURL;
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
        return ControlActions::readUI;
    case ActionKind::AppleScript:
        return ScriptActions::appleScript;
    case ActionKind::Done:
        return nullptr;
    }
    Q_UNREACHABLE();
}

} // namespace

QCoro::Task<QString> Executor::run(AgentAction action, Desktop desktop)
{
    const ActionTarget found = co_await target(action, desktop);
    co_return co_await run(action, found, desktop);
}

QCoro::Task<QString> Executor::run(AgentAction action, ActionTarget target, Desktop desktop)
{
    const std::optional<ActionKind> kind = kindOf(action);
    const Handler handler = kind ? handlerOf(*kind) : nullptr;
    if (!handler)
        throw ActionError(u"Unknown action “%1”."_s.arg(action.name));
    co_await requireSessionFor(action, desktop);
    const QString line = co_await handler(action, target, desktop);
    // Paths, file names and the model's own words may hold anything; the result is one harmless line.
    co_return Text::cleaned(line);
}

bool Executor::actsOnFrontmostApplication(const AgentAction &action)
{
    const std::optional<ActionKind> kind = kindOf(action);
    if (!kind)
        return false;
    switch (*kind) {
    case ActionKind::TypeText:
    case ActionKind::PressKey:
    case ActionKind::Click:
    case ActionKind::ReadUi:
        return true;
    case ActionKind::NewTab:
        // One in a named application brings that application forward itself.
        return !action.arg(u"app"_s);
    case ActionKind::OpenApp:
    case ActionKind::FocusApp:
    case ActionKind::QuitApp:
    case ActionKind::OpenUrl:
    case ActionKind::WebSearch:
    case ActionKind::CreateFolder:
    case ActionKind::Screenshot:
    case ActionKind::FindFiles:
    case ActionKind::OpenPath:
    case ActionKind::Trash:
    case ActionKind::ListWindows:
    case ActionKind::AppleScript:
    case ActionKind::Done:
        return false;
    }
    Q_UNREACHABLE();
}

QCoro::Task<void> Executor::returnTo(RunningApplication application, Desktop desktop)
{
    co_await requireUnlocked(desktop);
    const bool isGone = co_await desktop.workspace.isTerminated(application);
    if (isGone)
        throw ActionError(u"“%1” is no longer open, so nothing was done."_s.arg(application.shownName()));
    co_await desktop.workspace.activate(application);
}
