// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/ScreenObserver.h"

#include <QString>

// The private GNOME desktop, and the user's keyboard there. Thread: main.
namespace GnomeScreen {

ScreenObserver &observer();

// Holds a key down, or releases it; `code` is the kernel's.
void hold(int code);
void release(int code);
void press(int code);

// Layouts by XKB's names.
enum class Layout { US, German, French, Russian };

// Gives the user's keyboards this layout, through the desktop's settings. False on timeout.
bool useLayout(Layout layout);

// Gives the window with this title the focus, as a mouse click would. False if there is none, or on timeout.
bool activate(const QString &title);

// The shell's overview, in which no window has the focus.
void showOverview(bool isShown);

} // namespace GnomeScreen
