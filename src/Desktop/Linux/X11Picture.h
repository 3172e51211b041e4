// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11Connection.h"

#include <QImage>

// A picture of the whole screen, all monitors; through memory shared with the server where it is on this
// computer. Throws PlatformError. For the X thread.
QImage pictureOfScreen(X11Connection &connection);
