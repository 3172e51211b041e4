// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Places on the disk in the user's words. Pure functions: nothing is looked up. Callable from any thread.
namespace Locations {

// The absolute path that the text means: a location word ("my downloads folder"), "~" with what follows, an
// absolute path, or else a path below the home folder.
QString resolveFolder(const QString &text, const QString &homeDirectory);

// The path of something inside a folder; a name with "/" in it stands for nested folders.
QString pathInside(const QString &folder, const QString &name);

// The last component of a path, as shown in a result line.
QString lastComponent(const QString &path);

} // namespace Locations
