// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QString>

// Takes screenshots. Thread: main.
class ScreenCapture
{
public:
    virtual ~ScreenCapture() = default;

    // Silently captures the whole screen to a PNG file at `path`. Throws PlatformError if the capture can't
    // be started. A later failure leaves no file; the caller checks for that.
    virtual QCoro::Task<void> capture(QString path) = 0;
};
