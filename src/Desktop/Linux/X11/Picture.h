// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

#include <QImage>

// A picture of the whole screen, all monitors; through memory shared with the server where it is on this
// computer. A null picture where the server hands out none, or none that is the screen as it should be.
// Throws PlatformError when the server is gone. For the X thread.
QImage pictureOfScreen(X11Connection &connection);
