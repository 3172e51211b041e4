// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

#include <optional>

struct GnomeWindow
{
    uint identifier = 0;
    qint64 process = 0;
    QString title;
    QString className; // the app_id
    bool isFocused = false;
};

// What a user sees on a private GNOME desktop, from the shell itself, and the user's hands. Thread: main.
namespace Gnome {

// Front to back.
QList<GnomeWindow> windows();

std::optional<GnomeWindow> focused();

// Whether any window's title contains the text.
bool showsTitle(const QString &part);

// Gives the window with this title the focus, as a mouse click would. False if there is none, or on timeout.
bool activate(const QString &title);

// The shell's overview, in which no window has the focus.
void showOverview(bool isShown);

// All titles and app_ids in one line, for test messages.
QString described();

// Ends every application with a window, except this program, and waits for all windows to go. False on
// timeout.
bool clear();

// Holds a key down, or releases it; `code` is the kernel's.
void hold(int code);
void release(int code);
void press(int code);

} // namespace Gnome
