// SPDX-License-Identifier: Apache-2.0
#include "Actions/Session.h"

#include "Actions/ActionError.h"
#include "Actions/ActionKind.h"

using namespace Qt::StringLiterals;

namespace {

// What these do shows on the disk. Everything else would be taken for done by what the windows show.
bool worksOnFilesAlone(const AgentAction &action)
{
    const std::optional<ActionKind> kind = kindOf(action);
    if (!kind)
        return false;
    switch (*kind) {
    case ActionKind::CreateFolder:
    case ActionKind::FindFiles:
    case ActionKind::Trash:
        return true;
    case ActionKind::OpenApp:
    case ActionKind::FocusApp:
    case ActionKind::QuitApp:
    case ActionKind::OpenUrl:
    case ActionKind::WebSearch:
    case ActionKind::NewTab:
    case ActionKind::TypeText:
    case ActionKind::PressKey:
    case ActionKind::Click:
    case ActionKind::Screenshot:
    case ActionKind::OpenPath:
    case ActionKind::ListWindows:
    case ActionKind::ReadUi:
    case ActionKind::AppleScript:
    case ActionKind::Done:
        return false;
    }
    Q_UNREACHABLE();
}

} // namespace

QCoro::Task<void> Executor::requireUnlocked(Desktop desktop)
{
    const bool isLocked = co_await desktop.session.isLocked();
    if (isLocked)
        throw ActionError(u"The screen is locked."_s);
}

QCoro::Task<void> Executor::requireSessionFor(AgentAction action, Desktop desktop)
{
    co_await requireUnlocked(desktop);
    const std::optional<QString> obstacle = desktop.session.obstacle();
    if (obstacle && !worksOnFilesAlone(action))
        throw ActionError(*obstacle);
}
