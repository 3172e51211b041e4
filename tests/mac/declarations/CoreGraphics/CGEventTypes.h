// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CFBase.h>

typedef struct CF_BRIDGED_TYPE(id) __CGEvent *CGEventRef;
typedef struct CF_BRIDGED_TYPE(id) __CGEventSource *CGEventSourceRef;
typedef uint16_t CGKeyCode;

typedef CF_OPTIONS(uint64_t, CGEventFlags) {
    kCGEventFlagMaskAlphaShift = 0x00010000,
    kCGEventFlagMaskShift = 0x00020000,
    kCGEventFlagMaskControl = 0x00040000,
    kCGEventFlagMaskAlternate = 0x00080000,
    kCGEventFlagMaskCommand = 0x00100000,
    kCGEventFlagMaskSecondaryFn = 0x00800000,
};

typedef CF_ENUM(uint32_t, CGEventTapLocation) {
    kCGHIDEventTap = 0,
    kCGSessionEventTap,
    kCGAnnotatedSessionEventTap,
};

typedef CF_ENUM(int32_t, CGEventSourceStateID) {
    kCGEventSourceStatePrivate = -1,
    kCGEventSourceStateCombinedSessionState = 0,
    kCGEventSourceStateHIDSystemState = 1,
};
