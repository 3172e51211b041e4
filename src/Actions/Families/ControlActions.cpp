// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/ControlActions.h"

#include "Actions/Arguments.h"
#include "Actions/Operations/Accessibility.h"

using namespace Qt::StringLiterals;

QCoro::Task<QString> ControlActions::click(AgentAction action, ActionTarget target, Desktop desktop)
{
    const QString label = Arguments::required(action, u"label"_s, u"label"_s);
    co_return co_await Executor::press(label, target, desktop);
}

QString ControlActions::clickTitle(const AgentAction &action)
{
    return u"Clicking “%1”"_s.arg(Arguments::shown(action, u"label"_s));
}

QCoro::Task<QString> ControlActions::readUI(AgentAction, ActionTarget, Desktop desktop)
{
    co_return co_await Executor::readUI(desktop);
}
