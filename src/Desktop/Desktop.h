// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"
#include "Desktop/Clock.h"
#include "Desktop/Dialogs.h"
#include "Desktop/Files.h"
#include "Desktop/Keyboard.h"
#include "Desktop/ScreenCapture.h"
#include "Desktop/Scripting.h"
#include "Desktop/Session.h"
#include "Desktop/Workspace.h"

// The desktop services, one reference each; passed explicitly and copied freely. The services must outlive
// every action.
struct Desktop
{
    Session &session;
    Workspace &workspace;
    Accessibility &accessibility;
    Keyboard &keyboard;
    ScreenCapture &screenCapture;
    Scripting &scripting;
    Files &files;
    Dialogs &dialogs;
    Clock &clock;
};
