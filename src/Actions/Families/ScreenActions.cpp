// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/ScreenActions.h"

#include "Actions/Arguments.h"
#include "Actions/Operations/FileSearch.h"
#include "Actions/Operations/Locations.h"
#include "Actions/Operations/Observation.h"
#include "Actions/Operations/Screenshot.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<QString> runScreenshot(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString folder = Arguments::firstOf(action, u"save_to"_s, u"folder"_s, u"Downloads"_s);
    // Uses the digits of the user's locale.
    const QString time = QLocale().toString(desktop.clock.now(), u"yyyy-MM-dd 'at' HH.mm.ss"_s);
    const QString parent = co_await FileSearch::locate(folder, desktop);
    const QString path = Locations::pathInside(parent, u"Screenshot %1.png"_s.arg(time));
    co_await screenshot(path, desktop);
    co_return u"Saved screenshot to %1."_s.arg(path);
}

QCoro::Task<QString> runListWindows(AgentAction, ActionTarget, Desktop desktop)
{
    co_return co_await windowSummary(desktop);
}

QString screenshotTitle(const AgentAction &)
{
    return u"Taking a screenshot"_s;
}

QString listWindowsTitle(const AgentAction &)
{
    return u"Looking at open windows"_s;
}

} // namespace

constinit const ActionDefinition ScreenActions::screenshot{
    .name = u"screenshot",
    .title = &screenshotTitle,
    .run = &runScreenshot,
};

constinit const ActionDefinition ScreenActions::listWindows{
    .name = u"list_windows",
    .title = &listWindowsTitle,
    .run = &runListWindows,
};
