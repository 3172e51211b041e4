// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// The XDG user directories, which may be relocated or have localized names.
namespace UserFolders {

// The current path of "Desktop", "Downloads", "Documents", "Pictures", "Music" or "Videos"; empty for other
// names and disabled folders. Reads the disk. Any thread.
QString named(const QString &name);

} // namespace UserFolders
