// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSString (NSStringPathExtensions)
@property(readonly, copy) NSString *lastPathComponent;
@property(readonly, copy) NSString *stringByDeletingLastPathComponent;
@property(readonly, copy) NSString *pathExtension;
@property(readonly, copy) NSString *stringByDeletingPathExtension;
@property(readonly, copy) NSString *stringByExpandingTildeInPath;
- (NSString *)stringByAppendingPathComponent:(NSString *)component;
@end

NS_ASSUME_NONNULL_END
