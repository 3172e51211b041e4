// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Snapshot.h"

#include <QList>
#include <QString>
#include <QStringList>

// An installed application, as its desktop entry describes it. A plain value, used on any thread.
struct DesktopEntry
{
    QString identifier;  // the entry's id without ".desktop"
    QString path;        // of the file
    QString folder;      // the XDG application folder in which it lies
    QString name;        // localized and cleaned
    QString englishName; // before it was translated, cleaned
    QString windowClass; // StartupWMClass
    QString executable;  // file name of the program in Exec
    QString flatpak;     // the application that it belongs to, of a Flatpak
    QStringList categories;
    bool isShown = true; // meant to be seen in menus, on this desktop
};

// The entry to which a window belongs, by the two parts of its WM_CLASS, or none. In this order: an entry
// that names the class; one whose id is the class; one whose id ends in it; one that runs a program of that
// name. Entries that are shown win over hidden ones of the same rank.
const DesktopEntry *entryOfWindow(const QList<DesktopEntry> &entries, const QString &instance,
                                  const QString &className);

// The same by all that is known of the window. The application whose sandbox it is in counts before what the
// window says itself: one of that application's entries, the one for its class if there is such. Then an
// entry that the window names; then its class.
const DesktopEntry *entryOfWindow(const QList<DesktopEntry> &entries, const X11Window &window);
