// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/WindowSystem/WindowSystem.h"

// Lets keys go to one application only. `windowSystem` must outlive this object. Thread: main.
class FocusGuard
{
public:
    FocusGuard(WindowSystem &windowSystem, const DesktopWindow &receiver)
        : m_windowSystem(windowSystem), m_receiver(receiver)
    {
    }

    // Call it right before sending keys. Throws PlatformError unless a window of the receiver's application
    // has the keyboard focus; from the second call on, it says that typing was stopped.
    QCoro::Task<void> requireFocus();

private:
    WindowSystem &m_windowSystem;
    const DesktopWindow m_receiver;
    bool m_hasBegun = false;
};
