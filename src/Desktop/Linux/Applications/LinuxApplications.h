// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Applications/DesktopEntry.h"
#include "Desktop/Linux/X11/Snapshot.h"
#include "Desktop/Workspace.h"

#include <optional>

// Joins windows and desktop entries to what the user calls applications: one for each process that owns a
// window, known by the first one; but of a process whose windows belong to several desktop entries, or tell
// several classes, one for each of these, as the parts of an office suite. Pure functions.
namespace LinuxApplications {

// The snapshot with every window's part of its process. A dialog goes with the window that it belongs to.
X11Snapshot withParts(X11Snapshot snapshot, const QList<DesktopEntry> &entries);

// In the order of their first windows. `snapshot` here and below: one with parts.
QList<RunningApplication> running(const X11Snapshot &snapshot, const QList<DesktopEntry> &entries);

// The application of one of the snapshot's windows.
RunningApplication ofWindow(const X11Window &window, const X11Snapshot &snapshot,
                            const QList<DesktopEntry> &entries);

// The window of the application with that bundle that should come to the front, or null.
const X11Window *windowToShow(const ApplicationBundle &bundle, const X11Snapshot &snapshot,
                              const QList<DesktopEntry> &entries);

ApplicationBundle bundleOf(const DesktopEntry &entry);

// Without the name in the user's language. A program that runs others, as "flatpak", names none of them.
ApplicationNames namesOf(const DesktopEntry &entry);

} // namespace LinuxApplications
