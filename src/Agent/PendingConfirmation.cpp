// SPDX-License-Identifier: Apache-2.0
#include "Agent/PendingConfirmation.h"

#include "Base/Text.h"

QString PendingConfirmation::shownReason() const
{
    const bool isScript = action.name == QLatin1String("applescript");
    return Text::withVisibleMarks(reason, isScript ? Text::Layout::Lines : Text::Layout::OneLine);
}
