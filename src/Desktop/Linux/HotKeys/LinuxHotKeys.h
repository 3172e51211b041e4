// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Display.h"
#include "Desktop/Shell/HotKeys.h"

class X11HotKeys;

// Hot keys by X11 key grabs. Thread: main.
class LinuxHotKeys : public HotKeys
{
public:
    // `display` must outlive this object.
    explicit LinuxHotKeys(X11Display &display);
    ~LinuxHotKeys() override;
    LinuxHotKeys(const LinuxHotKeys &) = delete;
    LinuxHotKeys &operator=(const LinuxHotKeys &) = delete;

    QCoro::Task<std::shared_ptr<HotKeyReference>> registerHotKey(std::uint16_t virtualKey,
                                                                 HotKeyModifiers modifiers,
                                                                 HotKeyIdentifier identifier,
                                                                 std::function<void()> pressed) override;

private:
    X11Display &m_display;
    std::shared_ptr<X11HotKeys> m_grabs; // shared with the X thread
    int m_lastNumber = 0;
};
