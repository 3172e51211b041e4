// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSArray.h>
#include <Foundation/NSError.h>
#include <Foundation/NSURL.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSTask : NSObject
@property(nullable, copy) NSURL *executableURL;
@property(nullable, copy) NSArray<NSString *> *arguments;
@property(nullable, copy) void (^terminationHandler)(NSTask *task);
@property(readonly, getter=isRunning) BOOL running;
@property(readonly) int terminationStatus;
@property(readonly) int processIdentifier;
- (instancetype)init;
- (BOOL)launchAndReturnError:(NSError *_Nullable *_Nullable)error;
- (void)terminate;
- (void)waitUntilExit;
@end

NS_ASSUME_NONNULL_END
