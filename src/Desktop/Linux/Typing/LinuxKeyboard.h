// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Typing/ReceiverKeyboard.h"
#include "Desktop/Linux/Typing/SpareKeyNotices.h"
#include "Desktop/Linux/X11/Display.h"

// Sends keys through the X server's XTEST extension. If this program's own window is active, the application
// that was in front before is focused first. `display` must outlive this object. Thread: main.
//
// Input methods that compose characters (for Chinese, for example) also receive the keys and may convert them
// to other text.
class LinuxKeyboard : public ReceiverKeyboard
{
public:
    LinuxKeyboard(X11Display &display, FrontmostWindow frontmostWindow);

    QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                           std::optional<RunningApplication> receiver) override;
    QCoro::Task<bool> strike(std::uint16_t virtualKey, RunningApplication receiver) override;
    QCoro::Task<bool> canSendKeys() override;

private:
    // Types on the X thread, then calls `finish` there.
    template <typename Finish>
    auto type(QList<KeyStroke> strokes, std::chrono::microseconds pause, DesktopWindow receiver,
              Finish finish);

    X11Display &m_display;
    FrontmostWindow m_frontmostWindow;
    SpareKeyNotices m_ownNotices;
};
