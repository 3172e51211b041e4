// SPDX-License-Identifier: Apache-2.0
#include "Agent/ActionSignature.h"

namespace {

// Length-prefixed, so that different names, keys and values cannot yield the same text.
QString measured(const QString &text)
{
    return QString::number(text.size()) + u':' + text;
}

} // namespace

QString actionSignature(const AgentAction &action)
{
    QString signature = measured(action.name) + u'|';
    // The map is sorted by key.
    for (auto argument = action.args.cbegin(); argument != action.args.cend(); ++argument)
        signature += measured(argument.key()) + measured(argument.value());
    return signature;
}
