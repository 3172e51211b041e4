// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/TaskActions.h"

using namespace Qt::StringLiterals;

namespace {

QString doneTitle(const AgentAction &)
{
    return u"Done"_s;
}

} // namespace

constinit const ActionDefinition TaskActions::done{.name = u"done", .title = &doneTitle};
