// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Names by which tests written for X11 know applications and keys. Pure functions.
namespace X11Names {

// The class that the application with this app_id has on X11.
QString classOf(const QString &applicationIdentifier);

// The keysym's name for xdotool's name of a key.
QString keyName(const QString &name);

} // namespace X11Names
