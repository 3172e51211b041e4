// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CFArray.h>
#include <CoreFoundation/CFString.h>

typedef uint32_t CGWindowID;

#define kCGNullWindowID (static_cast<CGWindowID>(0))

typedef CF_OPTIONS(uint32_t, CGWindowListOption) {
    kCGWindowListOptionAll = 0,
    kCGWindowListOptionOnScreenOnly = (1 << 0),
    kCGWindowListOptionOnScreenAboveWindow = (1 << 1),
    kCGWindowListOptionOnScreenBelowWindow = (1 << 2),
    kCGWindowListOptionIncludingWindow = (1 << 3),
    kCGWindowListExcludeDesktopElements = (1 << 4),
};

CF_ASSUME_NONNULL_BEGIN
extern "C" {
extern const CFStringRef kCGWindowNumber;
extern const CFStringRef kCGWindowLayer;
extern const CFStringRef kCGWindowOwnerPID;
extern const CFStringRef kCGWindowOwnerName;
extern const CFStringRef kCGWindowName;
CFArrayRef _Nullable CGWindowListCopyWindowInfo(CGWindowListOption option,
                                                CGWindowID relativeToWindow) CF_RETURNS_RETAINED;
bool CGPreflightScreenCaptureAccess(void) API_AVAILABLE(macos(10.15));
bool CGRequestScreenCaptureAccess(void) API_AVAILABLE(macos(10.15));
}
CF_ASSUME_NONNULL_END
