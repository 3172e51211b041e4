// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QString>

// Pictures of the screen. Main thread.
class ScreenCapture
{
public:
    virtual ~ScreenCapture() = default;

    // Writes the whole screen as PNG to `path`, without a sound. Throws PlatformError when the capture cannot
    // be started at all; a capture that leaves no file is noticed by the caller.
    virtual QCoro::Task<void> capture(QString path) = 0;
};
