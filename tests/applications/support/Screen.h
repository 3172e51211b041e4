// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QSet>
#include <QString>

#include <optional>

// A managed window.
struct ScreenWindow
{
    quint32 identifier = 0;
    qint64 process = 0;
    QString title;
    QString className; // second string of WM_CLASS
    bool isDialog = false;
};

// What a user sees on the private desktop, queried over a separate X connection, without the code under test.
// Thread: main.
namespace Screen {

// Oldest first.
QList<ScreenWindow> windows();

std::optional<ScreenWindow> activeWindow();

// The class of the active window; empty if there is none.
QString activeClass();

// The windows of this class, case-insensitive.
QList<ScreenWindow> windowsOf(const QString &className);

bool shows(const QString &className);

// Whether any window's title contains the text.
bool showsTitle(const QString &part);

// All titles and classes in one line, for test messages.
QString described();

// Presses a key combination in xdotool's notation ("ctrl+l").
void pressKey(const QString &combination);

// Whether another client (a menu, a screen locker) has grabbed the keyboard.
bool isKeyboardGrabbed();

bool isAKeyPressed();

// The keycodes that have any keysym.
QSet<int> keysWithSymbols();

// Whether a window manager has reparented the window into a frame.
bool hasFrame(quint32 window);

// Asks the window manager to activate a window; wait for it with activeWindow().
void requestFocus(quint32 window);

} // namespace Screen
