// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/ControlActions.h"

#include "Actions/Arguments.h"
#include "Actions/Operations/Controls.h"

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<QString> runClick(AgentAction action, ActionTarget target, Desktop desktop)
{
    const QString label = Arguments::required(action, u"label"_s, u"label"_s);
    co_return co_await Controls::click(label, target, desktop);
}

QString clickTitle(const AgentAction &action)
{
    return u"Clicking “%1”"_s.arg(Arguments::shown(action, u"label"_s));
}

QCoro::Task<QString> runReadUI(AgentAction, ActionTarget target, Desktop desktop)
{
    co_return co_await Controls::readUI(target, desktop);
}

QString readUITitle(const AgentAction &)
{
    return u"Reading the interface"_s;
}

} // namespace

constinit const ActionDefinition ControlActions::click{
    .name = u"click",
    .title = &clickTitle,
    .run = &runClick,
    .focus = ActionDefinition::Focus::Needed,
};

constinit const ActionDefinition ControlActions::readUi{
    .name = u"read_ui",
    .title = &readUITitle,
    .run = &runReadUI,
    .focus = ActionDefinition::Focus::Needed,
};
