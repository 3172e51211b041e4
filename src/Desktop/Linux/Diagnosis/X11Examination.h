// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/WindowSystem/WindowSnapshot.h"

#include <QSize>
#include <QString>

#include <optional>

// A snapshot of everything that actions need from the X server. A plain value; texts aren't cleaned.
struct X11Examination
{
    bool isXwayland = false;              // then all else is unset: it wouldn't describe the user's desktop
    std::optional<QString> windowManager; // its name, if one is running
    bool takesKeys = false;
    qsizetype spareKeys = 0;   // keycodes without keysyms
    bool isHotKeyFree = false; // whether Alt+Space can be grabbed
    QSize picture;             // the screenshot's size; empty if the capture failed
    QString accessibilityBus;  // its address; empty if it isn't running
    WindowSnapshot windows;

    // Connects to $DISPLAY. Throws PlatformError if there is no X server or it is lost. May block
    // indefinitely: run it on a thread that can be abandoned.
    static X11Examination take();
};
