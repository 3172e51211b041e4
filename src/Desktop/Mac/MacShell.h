// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/MacHotKeys.h"
#include "Desktop/Mac/Window/MacAppearance.h"
#include "Desktop/Mac/Window/MacMenuBar.h"
#include "Desktop/Mac/Window/MacProgramActivity.h"
#include "Desktop/Mac/Window/MacWindowStyler.h"
#include "Desktop/Shell/Shell.h"

// What the desktop offers to our own window: owns the services. Made and destroyed on the main thread, after
// the application object and before it respectively.
class MacShell
{
public:
    // Makes the program one with a menu bar and a place in the Dock.
    MacShell();
    MacShell(const MacShell &) = delete;
    MacShell &operator=(const MacShell &) = delete;

    // References that are good for as long as this object lives.
    Shell shell();

private:
    MacHotKeys m_hotKeys;
    MacAppearance m_appearance;
    MacWindowStyler m_windowStyler;
    MacMenuBar m_menuBar;
    MacProgramActivity m_activity;
};
