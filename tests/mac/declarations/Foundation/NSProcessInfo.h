// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSString.h>

#include <stdint.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(uint64_t, NSActivityOptions) {
    NSActivityIdleDisplaySleepDisabled = 1ull << 40,
    NSActivityIdleSystemSleepDisabled = 1ull << 20,
    NSActivitySuddenTerminationDisabled = 1ull << 14,
    NSActivityAutomaticTerminationDisabled = 1ull << 15,
    NSActivityUserInitiated = 0x00ffffffull | NSActivityIdleSystemSleepDisabled,
    NSActivityUserInitiatedAllowingIdleSystemSleep = NSActivityUserInitiated & ~NSActivityIdleSystemSleepDisabled,
    NSActivityBackground = 0x000000ffull,
    NSActivityLatencyCritical = 0xff00000000ull,
};

@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo *processInfo;
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString *)reason;
- (void)endActivity:(id<NSObject>)activity;
@end

NS_ASSUME_NONNULL_END
