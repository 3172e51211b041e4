// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/MacHotKeys.h"
#include "Desktop/Mac/Window/MacAppearance.h"
#include "Desktop/Mac/Window/MacMenuBar.h"
#include "Desktop/Mac/Window/MacProgramActivity.h"
#include "Desktop/Mac/Window/MacWindowStyler.h"
#include "Desktop/Shell/Shell.h"

// Owns the services for the program's own window. Created after the application object and destroyed before
// it. Thread: main.
class MacShell
{
public:
    // Makes this a regular application, with a menu bar and a Dock icon.
    MacShell();
    MacShell(const MacShell &) = delete;
    MacShell &operator=(const MacShell &) = delete;

    // The references are valid for this object's lifetime.
    Shell shell();

private:
    MacHotKeys m_hotKeys;
    MacAppearance m_appearance;
    MacWindowStyler m_windowStyler;
    MacMenuBar m_menuBar;
    MacProgramActivity m_activity;
};
