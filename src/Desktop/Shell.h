// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Appearance.h"
#include "Desktop/HotKeys.h"
#include "Desktop/MenuBar.h"
#include "Desktop/ProgramActivity.h"
#include "Desktop/WindowStyler.h"

// The desktop that our own window lives on: one reference a service, passed explicitly and freely copied.
// Whoever makes the services keeps them alive longer than the window.
struct Shell
{
    HotKeys &hotKeys;
    Appearance &appearance;
    WindowStyler &windowStyler;
    MenuBar &menuBar;
    ProgramActivity &activity;
};
