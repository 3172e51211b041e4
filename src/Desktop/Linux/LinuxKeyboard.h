// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"
#include "Desktop/Linux/X11Display.h"

// Keys through the X server's test extension. While our own window is active, the application that was in
// front before it gets the focus back first. Main thread. `display` outlives this object.
//
// An input method that composes (as for Chinese) sees the keys as well, and may turn them into other text.
class LinuxKeyboard : public Keyboard
{
public:
    explicit LinuxKeyboard(X11Display &display);

    QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause) override;

    // Whether the X server takes keys from us at all.
    QCoro::Task<bool> canSendKeys();

private:
    X11Display &m_display;
};
