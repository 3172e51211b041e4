// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Protocol.h"
#include "Desktop/Linux/Atspi/Roles.h"
#include "Desktop/Linux/Atspi/States.h"

#include <QDBusMessage>
#include <QList>

// Which elements are looked for.
struct AtspiRule
{
    QList<AtspiRole> roles;   // one of them; whatever its role where there are none
    QList<AtspiState> states; // all of them
};

namespace Atspi {

// The question for all elements below `top` that the rule is met by, in the order of their tree and no more
// than `most`. Its answer is read with `references`. A pure function.
QDBusMessage matches(const AtspiReference &top, const AtspiRule &rule, int most);

} // namespace Atspi
