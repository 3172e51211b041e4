// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CFBase.h>

typedef const struct CF_BRIDGED_TYPE(NSArray) __CFArray *CFArrayRef;
typedef struct ORVANE_CFArrayCallBacks CFArrayCallBacks; // never looked into

CF_ASSUME_NONNULL_BEGIN
extern "C" {
extern const CFArrayCallBacks kCFTypeArrayCallBacks;
CFTypeID CFArrayGetTypeID(void);
CFArrayRef CFArrayCreate(CFAllocatorRef _Nullable allocator, const void *_Nullable *_Nullable values,
                         CFIndex count, const CFArrayCallBacks *_Nullable callBacks) CF_RETURNS_RETAINED;
CFIndex CFArrayGetCount(CFArrayRef array);
const void *_Null_unspecified CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
}
CF_ASSUME_NONNULL_END
