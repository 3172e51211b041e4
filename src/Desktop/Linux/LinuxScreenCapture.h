// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Pictures/PictureFile.h"
#include "Desktop/Linux/X11/Display.h"
#include "Desktop/ScreenCapture.h"

// Screenshots of the X screen, captured and written on worker threads. `display` must outlive this object.
class LinuxScreenCapture : public ScreenCapture
{
public:
    explicit LinuxScreenCapture(X11Display &display);

    // Leaves no file if the image can't be captured or written completely.
    QCoro::Task<void> capture(QString path) override;

private:
    X11Display &m_display;
    PictureFile m_file;
};
