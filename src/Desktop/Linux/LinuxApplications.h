// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/DesktopEntry.h"
#include "Desktop/Linux/X11Snapshot.h"
#include "Desktop/Workspace.h"

#include <optional>

// Joins windows and desktop entries to what the user calls applications: one for each process that owns a
// window, known by the process's first window. Pure functions.
namespace LinuxApplications {

// In the order of their first windows.
QList<RunningApplication> running(const X11Snapshot &snapshot, const QList<DesktopEntry> &entries);

// The application of one process, or none when it has no window.
std::optional<RunningApplication> ofProcess(qint64 process, const X11Snapshot &snapshot,
                                            const QList<DesktopEntry> &entries);

// The window of the application with that bundle that should come to the front, or null.
const X11Window *windowToShow(const ApplicationBundle &bundle, const X11Snapshot &snapshot,
                              const QList<DesktopEntry> &entries);

ApplicationBundle bundleOf(const DesktopEntry &entry);

} // namespace LinuxApplications
