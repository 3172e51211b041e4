// SPDX-License-Identifier: Apache-2.0
#include "Actions/ActionKind.h"

#include <QHash>

using namespace Qt::StringLiterals;

std::optional<ActionKind> kindOf(const AgentAction &action)
{
    static const QHash<QString, ActionKind> kinds{
        {u"open_app"_s, ActionKind::OpenApp},
        {u"focus_app"_s, ActionKind::FocusApp},
        {u"quit_app"_s, ActionKind::QuitApp},
        {u"open_url"_s, ActionKind::OpenUrl},
        {u"web_search"_s, ActionKind::WebSearch},
        {u"new_tab"_s, ActionKind::NewTab},
        {u"type_text"_s, ActionKind::TypeText},
        {u"press_key"_s, ActionKind::PressKey},
        {u"click"_s, ActionKind::Click},
        {u"create_folder"_s, ActionKind::CreateFolder},
        {u"screenshot"_s, ActionKind::Screenshot},
        {u"find_files"_s, ActionKind::FindFiles},
        {u"open_path"_s, ActionKind::OpenPath},
        {u"trash"_s, ActionKind::Trash},
        {u"list_windows"_s, ActionKind::ListWindows},
        {u"read_ui"_s, ActionKind::ReadUi},
        {u"applescript"_s, ActionKind::AppleScript},
        {u"done"_s, ActionKind::Done},
    };
    const auto kind = kinds.constFind(action.name);
    return kind == kinds.cend() ? std::nullopt : std::optional(*kind);
}
