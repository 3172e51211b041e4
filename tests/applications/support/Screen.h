// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QRect>
#include <QString>

#include <optional>

// An application's window.
struct ScreenWindow
{
    quint32 identifier = 0;
    qint64 process = 0;
    QString title;
    // The second string of WM_CLASS. On Wayland, the one that the application has on X11.
    QString className;
    QString applicationIdentifier; // on Wayland, the app_id
    QRect area;                    // on the screen, without decorations
};

// What a user sees on the private desktop, and the user's keys: from the window system itself, without the
// code under test. Thread: main.
namespace Screen {

enum class Session { X11, Sway, Labwc, Gnome, Plasma };

// The kind of desktop this process runs on.
Session session();

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

// Asks the window manager or compositor to activate a window; wait for it with activeWindow().
void requestFocus(quint32 window);

} // namespace Screen
