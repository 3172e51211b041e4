// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell.h"
#include "Desktop/SystemClock.h"

#include <memory>

class X11Display;

// What the desktop offers to our own window: owns the services, and a connection to the X server of their
// own, so that the hot key is heard while keys are being typed. Made and destroyed on the main thread, after
// the application object and before it respectively. Throws nothing: without an X server, or on Wayland,
// there is simply no hot key, and the window system places the window.
class LinuxShell
{
public:
    LinuxShell();
    ~LinuxShell();
    LinuxShell(const LinuxShell &) = delete;
    LinuxShell &operator=(const LinuxShell &) = delete;

    // References that are good for as long as this object lives.
    Shell shell();

private:
    SystemClock m_clock;
    std::unique_ptr<X11Display> m_display; // none without an X server
    std::unique_ptr<HotKeys> m_hotKeys;
    std::unique_ptr<Appearance> m_appearance;
    std::unique_ptr<WindowStyler> m_windowStyler;
    MenuBar m_menuBar;
    ProgramActivity m_activity;
};
