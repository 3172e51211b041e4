// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Pictures/PictureFile.h"
#include "Desktop/Linux/Portals/PortalBus.h"
#include "Desktop/ScreenCapture.h"

// Screenshots through the portal Screenshot. The first time, the desktop asks the user. `bus` must outlive
// this object. Thread: main.
class PortalScreenCapture : public ScreenCapture
{
public:
    explicit PortalScreenCapture(PortalBus &bus);

    // Throws PlatformError if the user refuses. Leaves no file if the image can't be captured or written
    // completely.
    QCoro::Task<void> capture(QString path) override;

private:
    PortalBus &m_bus;
    BoundedQueue m_reader{QStringLiteral("desktop.screenshot"), QStringLiteral("The disk")};
    PictureFile m_file;
};
