// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Applications/DesktopEntry.h"

#include <optional>

// The installed applications, read through the desktop's own library. Each call reads the disk afresh: what
// the user installs is there at once. Functions for the GIO thread.
namespace DesktopEntries {

// The application folders that exist, the user's own first.
QStringList folders();

// Every entry of all folders, in their order and by name inside a folder. Of several with the same id the
// first one counts, even when it takes the application away.
QList<DesktopEntry> all();

// The default application for a MIME type ("x-scheme-handler/https" for a scheme), as chosen by the user, or
// by the system where the user has not chosen.
std::optional<DesktopEntry> defaultForType(const QString &type);

// The default application for a URL, by what it points to.
std::optional<DesktopEntry> defaultForUrl(const QString &url);

} // namespace DesktopEntries
