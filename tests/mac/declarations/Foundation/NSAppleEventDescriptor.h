// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSAppleEventDescriptor : NSObject <NSCopying, NSSecureCoding>
@property(nullable, readonly, copy) NSString *stringValue;
@end

NS_ASSUME_NONNULL_END
