// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/ScreenCapture.h"

// Pictures of the screen through the system's own command. Main thread. Without the Screen Recording
// permission it leaves no file, and has the system ask the user for it.
class MacScreenCapture : public ScreenCapture
{
public:
    QCoro::Task<void> capture(QString path) override;
};
