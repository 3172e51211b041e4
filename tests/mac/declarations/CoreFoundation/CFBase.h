// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Availability.h>
#include <MacTypes.h>
#include <TargetConditionals.h>

#define CF_BRIDGED_TYPE(type) __attribute__((objc_bridge(type)))
#define CF_BRIDGED_MUTABLE_TYPE(type) __attribute__((objc_bridge_mutable(type)))
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))
#define CF_ENUM(type, name)                                                                                  \
    enum name : type name;                                                                                   \
    enum name : type
#define CF_OPTIONS(type, name)                                                                               \
    type name;                                                                                               \
    enum __attribute__((flag_enum)) : type
#define CF_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define CF_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define CF_IMPLICIT_BRIDGING_ENABLED _Pragma("clang arc_cf_code_audited begin")
#define CF_IMPLICIT_BRIDGING_DISABLED _Pragma("clang arc_cf_code_audited end")

typedef unsigned long CFTypeID;
typedef unsigned long CFOptionFlags;
typedef unsigned long CFHashCode;
typedef signed long CFIndex;
typedef const void *CFTypeRef;
typedef const struct CF_BRIDGED_TYPE(NSString) __CFString *CFStringRef;
typedef const struct __CFAllocator *CFAllocatorRef;

typedef struct
{
    CFIndex location;
    CFIndex length;
} CFRange;

CF_ASSUME_NONNULL_BEGIN
extern "C" {
extern const CFAllocatorRef _Null_unspecified kCFAllocatorDefault;
CFTypeID CFGetTypeID(CFTypeRef object);
CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
Boolean CFEqual(CFTypeRef left, CFTypeRef right);
}
CF_ASSUME_NONNULL_END
