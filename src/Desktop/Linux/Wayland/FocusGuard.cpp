// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/FocusGuard.h"

#include "Desktop/PlatformError.h"

using namespace Qt::StringLiterals;

QCoro::Task<void> FocusGuard::requireFocus()
{
    const WindowSnapshot snapshot = co_await m_windowSystem.snapshot();
    const DesktopWindow *active = snapshot.active();
    if (!active || active->process != m_receiver.process) {
        const QString failure = m_hasBegun ? u"“%1” lost the keyboard focus, so typing was stopped."_s
                                           : u"“%1” doesn't have the keyboard focus, so no keys were sent."_s;
        throw PlatformError(failure.arg(m_receiver.title));
    }
    m_hasBegun = true;
}
