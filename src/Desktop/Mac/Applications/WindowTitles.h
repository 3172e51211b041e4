// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Workspace.h"

// Infers permissions from a list of windows. Pure functions, independent of macOS.
namespace WindowTitles {

// Whether the list contains the title of another process's application window: macOS omits these without the
// Screen Recording permission.
bool includeOthers(const QList<WindowDescription> &windows, qint64 ownProcessIdentifier);

} // namespace WindowTitles
