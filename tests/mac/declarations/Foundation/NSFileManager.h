// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSArray.h>
#include <Foundation/NSError.h>
#include <Foundation/NSURL.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager *defaultManager;
@property(readonly, copy) NSURL *homeDirectoryForCurrentUser;
- (nullable NSArray<NSString *> *)contentsOfDirectoryAtPath:(NSString *)path error:(NSError **)error;
- (BOOL)fileExistsAtPath:(NSString *)path;
@end

NS_ASSUME_NONNULL_END
