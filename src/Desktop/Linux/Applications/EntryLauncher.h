// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// Starts applications with GIO, in a terminal or by D-Bus activation if the entry says so. They outlive us,
// run in a session of their own, and inherit none of our open files. Thread: GIO.
namespace EntryLauncher {

// Starts the application of the desktop entry at `path` with the URLs. `startupIdentifier` identifies its
// windows. Returns the started processes, none after D-Bus activation. Throws PlatformError.
QList<qint64> launch(const QString &path, const QStringList &urls, const QString &startupIdentifier);

// Whether the program is based on Chromium, which needs a command-line option to expose its pages to
// accessibility. `executable` is a path or the name of a program in $PATH.
bool isChromiumFamily(const QString &executable);

} // namespace EntryLauncher
