// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/MacScreenAccess.h"

#include "Desktop/Mac/Applications/WindowTitles.h"

#include <CoreGraphics/CoreGraphics.h>

QCoro::Task<bool> MacScreenAccess::isGranted(WindowList &windowList)
{
    if (CGPreflightScreenCaptureAccess())
        co_return true;
    // Others have seen a no here where the permission was there, mostly for programs in a terminal.
    const QList<WindowDescription> windows = co_await windowList.onScreenWindows();
    co_return WindowTitles::includeOthers(windows, windowList.ownProcessIdentifier());
}

void MacScreenAccess::request()
{
    CGRequestScreenCaptureAccess();
}
