// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/ScreenActions.h"

#include "Actions/Arguments.h"
#include "Actions/Operations/Files.h"
#include "Actions/Operations/Locations.h"
#include "Actions/Operations/Observation.h"

#include <QLocale>

using namespace Qt::StringLiterals;

QCoro::Task<QString> ScreenActions::screenshot(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString folder = Arguments::firstOf(action, u"save_to"_s, u"folder"_s, u"Downloads"_s);
    // In the digits of the user's language.
    const QString time = QLocale().toString(desktop.clock.now(), u"yyyy-MM-dd 'at' HH.mm.ss"_s);
    const QString parent = co_await Executor::locate(folder, desktop);
    const QString path = Executor::pathInside(parent, u"Screenshot %1.png"_s.arg(time));
    co_await Executor::screenshot(path, desktop);
    co_return u"Saved screenshot to %1."_s.arg(path);
}

QCoro::Task<QString> ScreenActions::listWindows(AgentAction, ActionTarget, Desktop desktop)
{
    co_return co_await Executor::windowSummary(desktop);
}
