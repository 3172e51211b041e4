// SPDX-License-Identifier: Apache-2.0
#include "Agent/PendingConfirmation.h"

#include "Base/Text.h"

using namespace Qt::StringLiterals;

QString PendingConfirmation::shownReason() const
{
    const bool isScript = action.name == "applescript"_L1;
    return Text::withVisibleMarks(reason, isScript ? Text::Layout::Lines : Text::Layout::OneLine);
}
