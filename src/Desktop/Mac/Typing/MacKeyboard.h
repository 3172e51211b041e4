// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Keyboard.h"
#include "Desktop/Mac/Applications/MacWorkspace.h"

// Keys through the system's event tap for hardware. Main thread. `workspace` and `clock` outlive this object.
class MacKeyboard : public Keyboard
{
public:
    MacKeyboard(MacWorkspace &workspace, Clock &clock);

    // Between two strokes it looks whether the target is still in front, and throws PlatformError if not.
    QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                           std::optional<RunningApplication> receiver) override;

private:
    QCoro::Task<void> waitForUsersModifiers();

    MacWorkspace &m_workspace;
    Clock &m_clock;
};
