// SPDX-License-Identifier: Apache-2.0
#include "Desktop/KeyRules.h"

#include "Base/PlatformWords.h"
#include "Desktop/PlatformError.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

void KeyRules::requireInFront(const std::optional<RunningApplication> &receiver,
                              const std::optional<RunningApplication> &frontmost)
{
    if (!receiver || !frontmost)
        throw PlatformError(u"No application is in front to receive the keys."_s);
    if (!frontmost->isPartOf(*receiver))
        throw PlatformError(
            u"“%1” is no longer in front, so no keys were sent."_s.arg(receiver->shownName()));
}

void KeyRules::ModifierPatience::requireTimeLeft(const QString &consequence) const
{
    if (std::chrono::steady_clock::now() - m_begin >= 500ms)
        throw PlatformError(u"A modifier key (%1) is held down, so %2."_s.arg(
            PlatformWords::current().modifierKeys, consequence));
}
