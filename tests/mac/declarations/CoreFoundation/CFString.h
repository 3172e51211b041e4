// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CFBase.h>

#define CFSTR(text) (reinterpret_cast<CFStringRef>(__builtin___CFStringMakeConstantString("" text "")))

CF_ASSUME_NONNULL_BEGIN
extern "C" {
CFTypeID CFStringGetTypeID(void);
CFIndex CFStringGetLength(CFStringRef string);
}
CF_ASSUME_NONNULL_END
