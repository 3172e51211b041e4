// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Linux/X11/Display.h"
#include "Desktop/ScreenCapture.h"

// Pictures of the X screen, taken and written away from the main thread. `display` outlives this object.
class LinuxScreenCapture : public ScreenCapture
{
public:
    explicit LinuxScreenCapture(X11Display &display);

    // A picture that cannot be taken or written as a whole leaves no file behind.
    QCoro::Task<void> capture(QString path) override;

private:
    X11Display &m_display;
    BoundedQueue m_writer{QStringLiteral("desktop.capture"), QStringLiteral("The disk")};
};
