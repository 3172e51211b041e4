// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSAppleEventDescriptor.h>
#include <Foundation/NSDictionary.h>

NS_ASSUME_NONNULL_BEGIN

extern "C" NSString *const NSAppleScriptErrorMessage;
extern "C" NSString *const NSAppleScriptErrorNumber;

@interface NSAppleScript : NSObject <NSCopying>
- (nullable instancetype)initWithSource:(NSString *)source NS_DESIGNATED_INITIALIZER;
- (NSAppleEventDescriptor *)executeAndReturnError:
    (NSDictionary<NSString *, id> *_Nullable *_Nullable)errorInfo;
@end

NS_ASSUME_NONNULL_END
