// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSNotification.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSDistributedNotificationCenter : NSNotificationCenter
+ (NSDistributedNotificationCenter *)defaultCenter;
- (void)postNotificationName:(NSNotificationName)name
                      object:(nullable NSString *)object
                    userInfo:(nullable NSDictionary *)userInfo
          deliverImmediately:(BOOL)deliverImmediately;
@end

NS_ASSUME_NONNULL_END
