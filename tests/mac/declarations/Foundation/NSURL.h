// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSURL : NSObject <NSSecureCoding, NSCopying>
@property(nullable, readonly, copy) NSString *absoluteString;
@property(nullable, readonly, copy) NSString *path;
@property(nullable, readonly, copy) NSString *lastPathComponent;
@property(nullable, readonly, copy) NSURL *URLByDeletingPathExtension;
@property(readonly, getter=isFileURL) BOOL fileURL;
+ (NSURL *)fileURLWithPath:(NSString *)path;
+ (NSURL *)fileURLWithPath:(NSString *)path isDirectory:(BOOL)isDirectory;
+ (nullable instancetype)URLWithString:(NSString *)text;
- (nullable NSURL *)URLByAppendingPathComponent:(NSString *)component;
@end

NS_ASSUME_NONNULL_END
