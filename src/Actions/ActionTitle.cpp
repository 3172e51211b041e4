// SPDX-License-Identifier: Apache-2.0
// The labels under which the user sees the actions.
#include "Actions/ActionKind.h"
#include "Actions/Families/ApplicationActions.h"
#include "Actions/Families/ControlActions.h"
#include "Actions/Families/FileActions.h"
#include "Actions/Families/KeyboardActions.h"
#include "Actions/Families/WebActions.h"
#include "Base/Text.h"

using namespace Qt::StringLiterals;

namespace {

QString titleOfUnknown(const QString &name)
{
    return Text::capitalized(QString(name).replace(u'_', u' '));
}

QString titleOf(ActionKind kind, const AgentAction &action)
{
    switch (kind) {
    case ActionKind::OpenApp:
        return ApplicationActions::openAppTitle(action);
    case ActionKind::FocusApp:
        return titleOfUnknown(action.name);
    case ActionKind::QuitApp:
        return ApplicationActions::quitAppTitle(action);
    case ActionKind::OpenUrl:
        return WebActions::openURLTitle(action);
    case ActionKind::WebSearch:
        return WebActions::webSearchTitle(action);
    case ActionKind::NewTab:
        return u"Opening new tab"_s;
    case ActionKind::TypeText:
        return KeyboardActions::typeTextTitle(action);
    case ActionKind::PressKey:
        return KeyboardActions::pressKeyTitle(action);
    case ActionKind::Click:
        return ControlActions::clickTitle(action);
    case ActionKind::CreateFolder:
        return FileActions::createFolderTitle(action);
    case ActionKind::Screenshot:
        return u"Taking a screenshot"_s;
    case ActionKind::FindFiles:
        return FileActions::findFilesTitle(action);
    case ActionKind::OpenPath:
        return FileActions::openPathTitle(action);
    case ActionKind::Trash:
        return FileActions::trashTitle(action);
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
