// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Snapshot.h"

#include <QSize>
#include <QString>

#include <optional>

// What the X server tells of everything that the actions need of it, at one moment. A plain value; its texts
// are as they came.
struct X11Examination
{
    bool isXwayland = false; // then nothing else is told: it would not be about the user's desktop
    std::optional<QString> windowManager; // what it calls itself, where one runs
    bool takesKeys = false;
    qsizetype spareKeys = 0;   // keys of the layout without a meaning of their own
    bool isHotKeyFree = false; // the program's own, Alt+Space
    QSize picture;             // of the screen, empty where none can be had
    QString accessibilityBus;  // its address; empty while it does not run
    X11Snapshot windows;

    // Connects to $DISPLAY and looks; throws PlatformError when there is no X server, or when it goes. Blocks
    // as long as the server does, so it is for a thread that may be left behind.
    static X11Examination take();
};
