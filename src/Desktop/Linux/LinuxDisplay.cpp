// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxDisplay.h"

#include <QtGlobal>

#include <xcb/xcb.h>

bool LinuxDisplay::isPresent()
{
    // Who names a window system to Qt knows what is there.
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        return true;
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}
