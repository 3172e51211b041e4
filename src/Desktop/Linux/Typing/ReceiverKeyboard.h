// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"
#include "Desktop/Linux/WindowSystem/WindowSystem.h"

#include <functional>

// The keyboard of a Linux desktop. Thread: main.
class ReceiverKeyboard : public Keyboard
{
public:
    // Finds the frontmost application's window, with its part.
    using FrontmostWindow = std::function<QCoro::Task<std::optional<DesktopWindow>>()>;

    // Presses a key without modifiers in the application, which must be frontmost. Returns whether the
    // application confirmed within 200 ms that it has handled the key; here always false, since only X11
    // applications confirm keys. Throws like `post`.
    virtual QCoro::Task<bool> strike(std::uint16_t virtualKey, RunningApplication receiver);

    // Whether the window system accepts keys from this program.
    virtual QCoro::Task<bool> canSendKeys() = 0;

protected:
    // Focuses the receiver's front window and returns it. Throws PlatformError.
    static QCoro::Task<DesktopWindow> target(WindowSystem &windowSystem, FrontmostWindow frontmostWindow,
                                             std::optional<RunningApplication> receiver);
};
