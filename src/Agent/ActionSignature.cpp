// SPDX-License-Identifier: Apache-2.0
#include "Agent/ActionSignature.h"

namespace {

// Text with its length in front, so that no choice of a name, keys and values can look like another one.
QString measured(const QString &text)
{
    return QString::number(text.size()) + u':' + text;
}

} // namespace

QString actionSignature(const AgentAction &action)
{
    QString signature = measured(action.name) + u'|';
    // The map holds its keys in ascending order.
    for (auto argument = action.args.cbegin(); argument != action.args.cend(); ++argument)
        signature += measured(argument.key()) + measured(argument.value());
    return signature;
}
