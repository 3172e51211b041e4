// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

// The desktop entry of this program in the user's own application folder, for a program that isn't installed.
// Desktops know a program by its entry: KWin, for example, grants access to windows and keys by it. Any
// thread.
namespace OwnEntry {

// Where the entry is, or would be.
QString path();

// The entry of the program at this absolute path.
QByteArray textFor(const QString &executable);

// Writes the entry, replacing an earlier one. Throws PlatformError, also if an entry is there that `write`
// hasn't written.
void write(const QString &executable);

// Removes what `write` has written; false if there is nothing. Throws PlatformError.
bool remove();

} // namespace OwnEntry
