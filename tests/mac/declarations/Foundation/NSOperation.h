// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSOperationQueue : NSObject
@property(class, readonly, strong) NSOperationQueue *mainQueue;
- (void)addOperationWithBlock:(void (^)(void))block;
@end

NS_ASSUME_NONNULL_END
