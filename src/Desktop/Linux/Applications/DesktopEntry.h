// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/WindowSystem/WindowSnapshot.h"

#include <QList>
#include <QString>
#include <QStringList>

// An installed application, from its desktop entry. A plain value, usable on any thread.
struct DesktopEntry
{
    QString identifier;  // the entry id without ".desktop"
    QString path;        // of the entry file
    QString folder;      // the XDG application folder that contains it
    QString name;        // localized and cleaned
    QString englishName; // untranslated and cleaned
    QString windowClass; // StartupWMClass
    QString executable;  // the file name of the program in Exec
    QString flatpak;     // the Flatpak application id (X-Flatpak), if any
    QStringList categories;
    bool isShown = true; // visible in this desktop's menus
};

// Finds a window's entry by WM_CLASS, or returns null. Precedence: StartupWMClass, then the id, then the last
// component of the id, then the executable's name; within each, visible entries before hidden ones.
const DesktopEntry *entryOfWindow(const QList<DesktopEntry> &entries, const QString &instance,
                                  const QString &className);

// Finds a window's entry by all its properties, or returns null. Precedence: the entries of its sandboxed
// application (the one that matches WM_CLASS, if any), then the entry id set on the window, then WM_CLASS.
const DesktopEntry *entryOfWindow(const QList<DesktopEntry> &entries, const DesktopWindow &window);
