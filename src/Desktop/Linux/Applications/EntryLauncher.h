// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// Starts applications through the desktop's own library: as the entry says, in a terminal or through D-Bus if
// it says so. What is started outlives us, has a session of its own, and none of our files open. Functions
// for the GIO thread.
namespace EntryLauncher {

// Starts the application of the desktop entry at `path`, with the URLs to open. `startupIdentifier` marks the
// windows that come of it. Returns the processes that were started, none where the application was asked over
// D-Bus. Throws PlatformError.
QList<qint64> launch(const QString &path, const QStringList &urls, const QString &startupIdentifier);

// Whether the program belongs to the Chromium family, whose pages stay hidden from accessibility unless it is
// told otherwise when it starts. `executable` is a path or the name of a program in $PATH.
bool isChromiumFamily(const QString &executable);

} // namespace EntryLauncher
