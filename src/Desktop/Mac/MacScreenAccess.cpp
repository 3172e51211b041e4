// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/MacScreenAccess.h"

#include "Desktop/Mac/Applications/WindowTitles.h"

#include <CoreGraphics/CoreGraphics.h>

#include <QCoreApplication>

QCoro::Task<bool> MacScreenAccess::isGranted(MacWindowList &windowList)
{
    if (CGPreflightScreenCaptureAccess())
        co_return true;
    // Reported to return false despite the permission, mostly for programs in a terminal.
    const QList<WindowDescription> windows = co_await windowList.onScreenWindows();
    co_return WindowTitles::includeOthers(windows, QCoreApplication::applicationPid());
}

void MacScreenAccess::request()
{
    CGRequestScreenCaptureAccess();
}
