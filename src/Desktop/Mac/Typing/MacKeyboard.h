// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Keyboard.h"
#include "Desktop/Mac/Applications/MacWorkspace.h"

// Sends keys through the HID event tap. `workspace` and `clock` must outlive this object. Thread: main.
class MacKeyboard : public Keyboard
{
public:
    MacKeyboard(MacWorkspace &workspace, Clock &clock);

    // Throws PlatformError if the target loses the focus between two strokes.
    QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                           std::optional<RunningApplication> receiver) override;

private:
    QCoro::Task<void> waitForUsersModifiers();

    MacWorkspace &m_workspace;
    Clock &m_clock;
};
