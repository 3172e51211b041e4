// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CFBase.h>

typedef const struct CF_BRIDGED_TYPE(NSDictionary) __CFDictionary *CFDictionaryRef;
typedef struct ORVANE_CFDictionaryKeyCallBacks CFDictionaryKeyCallBacks;     // never looked into
typedef struct ORVANE_CFDictionaryValueCallBacks CFDictionaryValueCallBacks; // never looked into

CF_ASSUME_NONNULL_BEGIN
extern "C" {
extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;
CFTypeID CFDictionaryGetTypeID(void);
CFDictionaryRef
CFDictionaryCreate(CFAllocatorRef _Nullable allocator, const void *_Nullable *_Nullable keys,
                   const void *_Nullable *_Nullable values, CFIndex count,
                   const CFDictionaryKeyCallBacks *_Nullable keyCallBacks,
                   const CFDictionaryValueCallBacks *_Nullable valueCallBacks) CF_RETURNS_RETAINED;
const void *_Nullable CFDictionaryGetValue(CFDictionaryRef dictionary, const void *_Nullable key);
}
CF_ASSUME_NONNULL_END
