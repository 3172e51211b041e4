// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSString : NSObject <NSCopying, NSSecureCoding>
@property(readonly) NSUInteger length;
@property(nullable, readonly) const char *UTF8String NS_RETURNS_INNER_POINTER;
+ (instancetype)string;
+ (nullable instancetype)stringWithUTF8String:(const char *)text;
- (BOOL)isEqualToString:(NSString *)other;
@end

NS_ASSUME_NONNULL_END
