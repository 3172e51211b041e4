// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxDisplay.h"

#include "Desktop/Linux/X11Link.h"
#include "Desktop/PlatformError.h"

#include <QtGlobal>

bool LinuxDisplay::isPresent()
{
    // Who names a window system to Qt knows what is there.
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        return true;
    try {
        X11Link::open();
        return true;
    } catch (const PlatformError &) {
        return false;
    }
}
