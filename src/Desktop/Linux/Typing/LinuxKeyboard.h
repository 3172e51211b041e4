// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"
#include "Desktop/Linux/Typing/SpareKeyNotices.h"
#include "Desktop/Linux/X11/Display.h"

#include <functional>

// Sends keys through the X server's XTEST extension. If this program's own window is active, the application
// that was in front before is focused first. `display` must outlive this object. Thread: main.
//
// Input methods that compose characters (for Chinese, for example) also receive the keys and may convert them
// to other text.
class LinuxKeyboard : public Keyboard
{
public:
    // Finds the frontmost application's window, with its part.
    using FrontmostWindow = std::function<QCoro::Task<std::optional<DesktopWindow>>()>;

    LinuxKeyboard(X11Display &display, FrontmostWindow frontmostWindow);

    QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                           std::optional<RunningApplication> receiver) override;

    // Presses a key without modifiers in the application, which must be frontmost. Returns whether the
    // application confirmed within 200 ms that it has handled the key. Throws like `post`.
    QCoro::Task<bool> strike(std::uint16_t virtualKey, RunningApplication receiver);

    // Whether the X server accepts keys from this program.
    QCoro::Task<bool> canSendKeys();

private:
    // Focuses the receiver's front window and returns it. Throws PlatformError.
    QCoro::Task<DesktopWindow> target(std::optional<RunningApplication> receiver);

    // Types on the X thread, then calls `finish` there.
    template <typename Finish>
    auto type(QList<KeyStroke> strokes, std::chrono::microseconds pause, DesktopWindow receiver,
              Finish finish);

    X11Display &m_display;
    FrontmostWindow m_frontmostWindow;
    SpareKeyNotices m_ownNotices;
};
