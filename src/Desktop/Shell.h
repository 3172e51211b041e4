// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Appearance.h"
#include "Desktop/HotKeys.h"
#include "Desktop/MenuBar.h"
#include "Desktop/ProgramActivity.h"
#include "Desktop/WindowStyler.h"

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
