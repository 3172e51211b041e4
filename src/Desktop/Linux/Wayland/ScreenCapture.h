// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Linux/Pictures/PictureFile.h"
#include "Desktop/Linux/Wayland/Connection.h"
#include "Desktop/ScreenCapture.h"

// Screenshots of a compositor with the protocol wlr-screencopy: all outputs as they are arranged, without the
// pointer. Captured and written on worker threads. Thread: main.
class WaylandScreenCapture : public ScreenCapture
{
public:
    static bool isOfferedBy(const WaylandConnection &connection);

    // Throws PlatformError if an output can't be captured. Leaves no file if the image can't be captured or
    // written completely.
    QCoro::Task<void> capture(QString path) override;

private:
    BoundedQueue m_reader{QStringLiteral("desktop.outputs"), QStringLiteral("The Wayland compositor")};
    PictureFile m_file;
};
