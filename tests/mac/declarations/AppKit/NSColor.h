// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSColor : NSObject <NSCopying, NSSecureCoding>
@property(class, readonly, strong) NSColor *clearColor;
@end

NS_ASSUME_NONNULL_END
