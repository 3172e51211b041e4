// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"
#include "Desktop/Linux/Typing/SpareKeyNotices.h"
#include "Desktop/Linux/X11/Display.h"

// Keys through the X server's test extension. While our own window is active, the application that was in
// front before it gets the focus back first. Main thread. `display` outlives this object.
//
// An input method that composes (as for Chinese) sees the keys as well, and may turn them into other text.
class LinuxKeyboard : public Keyboard
{
public:
    explicit LinuxKeyboard(X11Display &display);

    QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                           std::optional<RunningApplication> receiver) override;

    // Posts one key without modifiers to the application with this process, and tells whether it has handled
    // the key; false where it does not say so within a fifth of a second. Throws as `post` does.
    QCoro::Task<bool> strike(std::uint16_t virtualKey, qint64 receiver);

    // Whether the X server takes keys from us at all.
    QCoro::Task<bool> canSendKeys();

private:
    // The window of the receiver that is in front, with the focus. Throws PlatformError when there is none.
    QCoro::Task<X11Window> target(RunningApplication receiver);

    // On the X thread. Tells whether the receiver is known to have handled everything, where that is awaited.
    bool type(const QList<KeyStroke> &strokes, std::chrono::microseconds pause, const X11Window &receiver,
              bool isAwaited);

    X11Display &m_display;
    SpareKeyNotices m_ownNotices;
};
