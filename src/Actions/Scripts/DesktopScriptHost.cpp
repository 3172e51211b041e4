// SPDX-License-Identifier: Apache-2.0
#include "Actions/Scripts/DesktopScriptHost.h"

#include "Actions/Scripts/AnyApplication.h"
#include "Actions/Scripts/BrowserPages.h"
#include "Actions/Scripts/FileManager.h"
#include "Actions/Scripts/StandardAdditions.h"
#include "Actions/Scripts/SystemEvents.h"
#include "Base/Text.h"

using namespace Qt::StringLiterals;

QCoro::Task<std::optional<ScriptValue>> DesktopScriptHost::perform(ScriptCommand command)
{
    const Desktop desktop = m_desktop;
    std::optional<ScriptValue> answer = co_await StandardAdditions::perform(command, desktop);
    if (answer || !command.application)
        co_return answer;
    if (Text::equals(*command.application, u"System Events"_s))
        co_return co_await SystemEvents::perform(command, desktop);
    if (Text::equals(*command.application, u"Finder"_s))
        answer = co_await FileManager::perform(command, desktop);
    if (!answer)
        answer = m_drafts.perform(command);
    if (!answer)
        answer = co_await BrowserPages::perform(command, desktop);
    if (!answer)
        answer = co_await AnyApplication::perform(command, desktop);
    co_return answer;
}

QCoro::Task<void> DesktopScriptHost::finish()
{
    return m_drafts.open(m_desktop);
}
