// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Applications/DesktopEntry.h"

#include <optional>

// The installed applications, read with GIO. Nothing is cached, so that new installations show up at once.
// Thread: GIO.
namespace DesktopEntries {

// The existing application folders, the user's first.
QStringList folders();

// All entries, by folder and then by name. An entry hides later ones with the same id, even if it marks the
// application as removed.
QList<DesktopEntry> all();

// The default application for a MIME type ("x-scheme-handler/https" for a scheme): the user's choice, or else
// the system's.
std::optional<DesktopEntry> defaultForType(const QString &type);

// The default application for a URL, by its scheme or file type.
std::optional<DesktopEntry> defaultForUrl(const QString &url);

} // namespace DesktopEntries
