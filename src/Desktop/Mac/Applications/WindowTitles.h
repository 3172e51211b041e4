// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Workspace.h"

// What the titles in a list of windows tell about the program's permissions. Pure functions. Takes nothing of
// macOS.
namespace WindowTitles {

// Whether an application other than the one with this process has a window with a title: macOS gives titles
// only to who may take pictures of the screen.
bool includeOthers(const QList<WindowDescription> &windows, qint64 ownProcessIdentifier);

} // namespace WindowTitles
