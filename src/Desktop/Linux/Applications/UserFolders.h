// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// The folders that the user has chosen for certain things, or that were named in the user's language.
namespace UserFolders {

// The folder for "Desktop", "Downloads", "Documents", "Pictures", "Music" or "Videos", as the user's settings
// say at this moment; the empty text for other names and where it is switched off. Any thread; reads the
// disk.
QString named(const QString &name);

} // namespace UserFolders
