// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Diagnosis.h"
#include "Desktop/Linux/Wayland/Compositor.h"

#include <QList>

// Turns what a Wayland desktop offers into check results. Pure functions.
namespace WaylandChecks {

// The way for each kind of operation, and what to do where there is none.
QList<DiagnosticCheck> ways(const WaylandOffer &offer);

// The same with our extension of GNOME Shell; `hasPortal` tells whether a desktop portal can be started.
QList<DiagnosticCheck> extensionWays(bool hasPortal);

} // namespace WaylandChecks
