// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"
#include "Desktop/Linux/Typing/SpareKeyNotices.h"
#include "Desktop/Linux/X11/Display.h"

#include <functional>

// Sends keys through the X server's XTEST extension. While our own window is active, the application that was
// in front before gets the focus back first. Main thread. `display` outlives this object.
//
// An input method that composes characters (for Chinese, for example) sees the keys as well and may turn them
// into other text.
class LinuxKeyboard : public Keyboard
{
public:
    // Finds the window of the frontmost application, with its part.
    using FrontmostWindow = std::function<QCoro::Task<std::optional<X11Window>>()>;

    LinuxKeyboard(X11Display &display, FrontmostWindow frontmostWindow);

    QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                           std::optional<RunningApplication> receiver) override;

    // Posts one key without modifiers to the application with this process. Returns whether the application
    // confirmed within a fifth of a second that it has handled the key. Throws as `post` does.
    QCoro::Task<bool> strike(std::uint16_t virtualKey, qint64 receiver);

    // Whether the X server takes keys from us at all.
    QCoro::Task<bool> canSendKeys();

private:
    // Gives the focus to the receiver's window in front and returns it. Throws PlatformError.
    QCoro::Task<X11Window> target(std::optional<RunningApplication> receiver);

    // Types on the X thread, then calls `finish` there.
    template <typename Finish>
    auto type(QList<KeyStroke> strokes, std::chrono::microseconds pause, X11Window receiver, Finish finish);

    X11Display &m_display;
    FrontmostWindow m_frontmostWindow;
    SpareKeyNotices m_ownNotices;
};
