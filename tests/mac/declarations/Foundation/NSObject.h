// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CFBase.h>
#include <objc/NSObject.h>

@protocol NSCopying
- (nonnull id)copyWithZone:(nullable void *)zone;
@end

@protocol NSSecureCoding
@end
