// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QSet>
#include <QString>

#include <optional>

// One window, as the window manager tells it.
struct ScreenWindow
{
    quint32 identifier = 0;
    qint64 process = 0;
    QString title;
    QString className; // second part of WM_CLASS
    bool isDialog = false;
};

// What a person would see on the private desktop, asked of the X server over a connection of its own, with
// none of the code under test. Main thread.
namespace Screen {

// Oldest first.
QList<ScreenWindow> windows();

std::optional<ScreenWindow> activeWindow();

// The class of the active window; empty when there is none.
QString activeClass();

// The windows of that class, letter case aside.
QList<ScreenWindow> windowsOf(const QString &className);

bool shows(const QString &className);

// Whether a window's title contains the text.
bool showsTitle(const QString &part);

// All titles and classes in one line, for a test's message.
QString described();

// Presses a key combination as xdotool writes it ("ctrl+l"), to reach what only the keyboard reveals.
void pressKey(const QString &combination);

// Whether an application (a menu, a locked screen) takes all keys for itself.
bool isKeyboardGrabbed();

bool isAKeyPressed();

// The codes of the keys that type anything.
QSet<int> keysWithSymbols();

// Whether a window manager has put the window into a frame of its own.
bool hasFrame(quint32 window);

// Asks the window manager to bring a window to the front; wait for it with activeWindow().
void requestFocus(quint32 window);

} // namespace Screen
