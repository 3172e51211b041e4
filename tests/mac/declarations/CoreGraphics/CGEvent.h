// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreGraphics/CGEventTypes.h>

CF_ASSUME_NONNULL_BEGIN
extern "C" {
CGEventRef _Nullable CGEventCreateKeyboardEvent(CGEventSourceRef _Nullable source, CGKeyCode virtualKey,
                                                bool keyDown) CF_RETURNS_RETAINED;
void CGEventSetFlags(CGEventRef _Nullable event, CGEventFlags flags);
CGEventFlags CGEventGetFlags(CGEventRef _Nullable event);
void CGEventKeyboardSetUnicodeString(CGEventRef _Nullable event, UniCharCount length,
                                     const UniChar *_Nullable text);
void CGEventPost(CGEventTapLocation tap, CGEventRef _Nullable event);
}
CF_ASSUME_NONNULL_END
