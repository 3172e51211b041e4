// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Our extension of GNOME Shell in the user's own extension folder. The shell runs it from the next login on.
// Blocks on the disk and the settings; any thread.
namespace ExtensionFiles {

// Whether GNOME Shell is installed.
bool areUseful();

// Where the extension is, or would be.
QString folder();

// Writes the extension, which then answers the program at this absolute path, and enables it. Replaces
// another version. Throws PlatformError.
void write(const QString &executable);

// Whether the extension that is there is the one that this program would write.
bool areCurrent();

// Its version, as it tells it when it runs.
QString version();

// Disables and removes the extension; false if there is none. Throws PlatformError.
bool remove();

} // namespace ExtensionFiles
