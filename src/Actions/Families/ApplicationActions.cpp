// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/ApplicationActions.h"

#include "Actions/Arguments.h"
#include "Actions/Operations/Applications.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// The time an application has to quit before the check.
constexpr auto quittingTime = 600ms;

QCoro::Task<bool> stillRuns(std::optional<RunningApplication> application, Desktop desktop)
{
    if (!application)
        co_return false;
    const bool hasEnded = co_await desktop.workspace.isTerminated(*application);
    co_return !hasEnded;
}

QCoro::Task<QString> runOpenApp(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString name = Arguments::required(action, u"app"_s, u"app name"_s);
    const QString opened = co_await Applications::launch(name, desktop);
    co_return u"%1 is now frontmost."_s.arg(opened);
}

QString openAppTitle(const AgentAction &action)
{
    return u"Launching "_s + Arguments::shown(action, u"app"_s, u"app"_s);
}

QCoro::Task<QString> runQuitApp(AgentAction action, ActionTarget target, Desktop desktop)
{
    const QString name = Arguments::required(action, u"app"_s, u"app name"_s);
    target.requireFound();
    const bool isRunning = co_await stillRuns(target.quitting, desktop);
    if (!isRunning)
        co_return u"%1 is not running."_s.arg(name);
    co_await desktop.workspace.terminate(*target.quitting);
    co_await desktop.clock.sleep(quittingTime);
    const bool ended = co_await desktop.workspace.isTerminated(*target.quitting);
    if (ended)
        co_return u"%1 quit."_s.arg(name);
    co_return u"Asked %1 to quit (it may be waiting on a save prompt)."_s.arg(name);
}

QString quitAppTitle(const AgentAction &action)
{
    return u"Closing "_s + Arguments::shown(action, u"app"_s, u"app"_s);
}

} // namespace

constinit const ActionDefinition ApplicationActions::openApp{
    .name = u"open_app",
    .title = &openAppTitle,
    .run = &runOpenApp,
};

constinit const ActionDefinition ApplicationActions::focusApp{
    .name = u"focus_app",
    .run = &runOpenApp,
};

constinit const ActionDefinition ApplicationActions::quitApp{
    .name = u"quit_app",
    .title = &quitAppTitle,
    .run = &runQuitApp,
};
