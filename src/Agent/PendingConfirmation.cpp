// SPDX-License-Identifier: Apache-2.0
#include "Agent/PendingConfirmation.h"

#include "Actions/ActionKind.h"
#include "Base/Text.h"

QString PendingConfirmation::shownReason() const
{
    const bool isScript = kindOf(action) == ActionKind::AppleScript;
    return Text::withVisibleMarks(reason, isScript ? Text::Layout::Lines : Text::Layout::OneLine);
}
