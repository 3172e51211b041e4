// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell/Shell.h"
#include "Desktop/SystemClock.h"

#include <memory>

class X11Display;

// The services for our own window. They have a separate X connection, so that the hot key works while the
// desktop services type. Without an X server, or on Wayland, only Plasma has hot keys, and the window system
// places the window. Never throws. Construct it after the application object and destroy it before. Thread: main.
class LinuxShell
{
public:
    LinuxShell();
    ~LinuxShell();
    LinuxShell(const LinuxShell &) = delete;
    LinuxShell &operator=(const LinuxShell &) = delete;

    // The references are valid for this object's lifetime.
    Shell shell();

private:
    SystemClock m_clock;
    std::unique_ptr<X11Display> m_display; // null without an X server
    std::unique_ptr<HotKeys> m_hotKeys;
    std::unique_ptr<Appearance> m_appearance;
    std::unique_ptr<WindowStyler> m_windowStyler;
    MenuBar m_menuBar;
    ProgramActivity m_activity;
};
