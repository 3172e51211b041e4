// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Workspace.h"

Q_FORWARD_DECLARE_OBJC_CLASS(NSRunningApplication);
Q_FORWARD_DECLARE_OBJC_CLASS(NSURL);

// Translates between AppKit's applications and the seam's. Pure functions.
namespace MacApplications {

RunningApplication described(NSRunningApplication *application);

// Known by the last component of its location, without the extension.
ApplicationBundle bundleAt(const QString &path);

// Null when the process has ended, or is no application.
NSRunningApplication *running(qint64 processIdentifier);

// The five application folders, in their order; those that cannot be read are left out. Reads the disk.
QList<ApplicationFolder> folders();

} // namespace MacApplications
