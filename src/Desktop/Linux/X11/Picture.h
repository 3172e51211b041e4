// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

#include <QImage>

// Captures the whole screen, all monitors, through shared memory if the server is local. Returns a null image
// if the server refuses or the data doesn't match the screen. Throws PlatformError if the server is lost.
// Thread: X.
QImage pictureOfScreen(X11Connection &connection);
