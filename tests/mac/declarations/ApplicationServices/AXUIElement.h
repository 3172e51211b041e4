// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ApplicationServices/AXError.h>
#include <CoreFoundation/CoreFoundation.h>

typedef const struct CF_BRIDGED_TYPE(id) __AXUIElement *AXUIElementRef;

typedef CF_OPTIONS(UInt32, AXCopyMultipleAttributeOptions) {
    kAXCopyMultipleAttributeOptionStopOnError = 0x1,
};

CF_ASSUME_NONNULL_BEGIN
extern "C" {
extern CFStringRef kAXTrustedCheckOptionPrompt;
Boolean AXIsProcessTrusted(void);
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef _Nullable options);
CFTypeID AXUIElementGetTypeID(void);
AXUIElementRef AXUIElementCreateApplication(pid_t process) CF_RETURNS_RETAINED;
AXUIElementRef AXUIElementCreateSystemWide(void) CF_RETURNS_RETAINED;
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                      CFTypeRef _Nullable *_Nonnull CF_RETURNS_RETAINED value);
AXError AXUIElementCopyMultipleAttributeValues(AXUIElementRef element, CFArrayRef attributes,
                                               AXCopyMultipleAttributeOptions options,
                                               CFArrayRef _Nullable *_Nonnull CF_RETURNS_RETAINED values);
AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action);
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float timeoutInSeconds);
}
CF_ASSUME_NONNULL_END
