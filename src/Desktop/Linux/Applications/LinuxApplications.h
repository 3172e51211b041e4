// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Applications/DesktopEntry.h"
#include "Desktop/Linux/WindowSystem/WindowSnapshot.h"
#include "Desktop/Workspace.h"

#include <optional>

// Groups windows into applications with the help of desktop entries: one application per process, described
// by its first window. A process whose windows have different entries or classes, such as an office suite,
// yields one application (a "part") for each. Pure functions.
namespace LinuxApplications {

// Sets `part` of every window. A dialog has the part of its main window.
WindowSnapshot withParts(WindowSnapshot snapshot, const QList<DesktopEntry> &entries);

// The running applications, in the order of their first windows. Here and below, `snapshot` must have parts.
QList<RunningApplication> running(const WindowSnapshot &snapshot, const QList<DesktopEntry> &entries);

// The application of one of the snapshot's windows.
RunningApplication ofWindow(const DesktopWindow &window, const WindowSnapshot &snapshot,
                            const QList<DesktopEntry> &entries);

// The window to bring to the front for this application, or null.
const DesktopWindow *windowToShow(const ApplicationBundle &bundle, const WindowSnapshot &snapshot,
                                  const QList<DesktopEntry> &entries);

ApplicationBundle bundleOf(const DesktopEntry &entry);

// The application's names besides the localized one. Omits a program that only launches others, such as
// "flatpak".
ApplicationNames namesOf(const DesktopEntry &entry);

} // namespace LinuxApplications
