// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell/Appearance.h"
#include "Desktop/Shell/HotKeys.h"
#include "Desktop/Shell/MenuBar.h"
#include "Desktop/Shell/ProgramActivity.h"
#include "Desktop/Shell/WindowStyler.h"

// The services used by our own window, passed explicitly and copied freely. Their owner keeps them alive
// longer than the window.
struct Shell
{
    HotKeys &hotKeys;
    Appearance &appearance;
    WindowStyler &windowStyler;
    MenuBar &menuBar;
    ProgramActivity &activity;
};
