// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreGraphics/CGEventTypes.h>

CF_ASSUME_NONNULL_BEGIN
extern "C" {
CGEventSourceRef _Nullable CGEventSourceCreate(CGEventSourceStateID state) CF_RETURNS_RETAINED;
CGEventFlags CGEventSourceFlagsState(CGEventSourceStateID state);
}
CF_ASSUME_NONNULL_END
