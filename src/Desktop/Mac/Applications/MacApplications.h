// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Workspace.h"

Q_FORWARD_DECLARE_OBJC_CLASS(NSRunningApplication);
Q_FORWARD_DECLARE_OBJC_CLASS(NSURL);

// Converts AppKit objects to the types of the desktop interfaces. Pure functions.
namespace MacApplications {

RunningApplication described(NSRunningApplication *application);

// Its display name is the last component of the path, without the extension.
ApplicationBundle bundleAt(const QString &path);

// Returns nil if the process has ended or isn't an application.
NSRunningApplication *running(qint64 processIdentifier);

// The five application folders by precedence, without unreadable ones. Reads the disk.
QList<ApplicationFolder> folders();

} // namespace MacApplications
