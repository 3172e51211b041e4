// SPDX-License-Identifier: Apache-2.0
#include "Actions/Arguments.h"

#include "Actions/ActionError.h"

using namespace Qt::StringLiterals;

QString Arguments::required(const AgentAction &action, const QString &key, const QString &what)
{
    const std::optional<QString> value = action.arg(key);
    if (!value)
        throw ActionError(u"Missing %1."_s.arg(what));
    return *value;
}

QString Arguments::firstOf(const AgentAction &action, const QString &key, const QString &otherKey,
                           const QString &fallback)
{
    return action.arg(key).value_or(action.arg(otherKey).value_or(fallback));
}

QString Arguments::shown(const AgentAction &action, const QString &key, const QString &fallback)
{
    return action.arg(key).value_or(fallback);
}
