// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSString.h>
#include <Foundation/NSURL.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle *mainBundle;
@property(nullable, readonly, copy) NSString *bundleIdentifier;
@property(readonly, copy) NSURL *bundleURL;
@end

NS_ASSUME_NONNULL_END
