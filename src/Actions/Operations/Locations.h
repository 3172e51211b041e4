// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Resolves locations given in the user's words. Pure functions without file system access. Any thread.
namespace Locations {

// The absolute path for a location word ("my downloads folder"), "~" and a subpath, an absolute path, or a
// path relative to the home folder.
QString resolveFolder(const QString &text, const QString &homeDirectory);

// The path of an item in a folder; "/" in the name denotes nested folders.
QString pathInside(const QString &folder, const QString &name);

// The last component of a path, as shown in a result line.
QString lastComponent(const QString &path);

} // namespace Locations
