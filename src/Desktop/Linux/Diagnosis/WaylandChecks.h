// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"
#include "Desktop/Linux/HotKeys/KGlobalAccelHotKeys.h"
#include "Desktop/Linux/Wayland/Compositor.h"

#include <QList>

// Turns what a Wayland desktop offers into check results. Pure functions.
namespace WaylandChecks {

// The way for each kind of operation, and what to do where there is none. The offer must be complete;
// `hasPortal` tells whether a desktop portal can be started.
QList<DiagnosticCheck> ways(const WaylandOffer &offer, bool hasPortal,
                            const KGlobalAccelHotKeys::Standing &hotKey);

// The same with our extension of GNOME Shell.
QList<DiagnosticCheck> extensionWays(bool hasPortal);

} // namespace WaylandChecks
