// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <objc/NSObjCRuntime.h>

@class NSString;

NS_ASSUME_NONNULL_BEGIN

@protocol NSObject
@property(readonly) NSUInteger hash;
@property(readonly) Class superclass;
@property(readonly, copy) NSString *description;
- (BOOL)isEqual:(nullable id)object;
- (Class)class;
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)isMemberOfClass:(Class)aClass;
- (BOOL)conformsToProtocol:(Protocol *)aProtocol;
- (BOOL)respondsToSelector:(SEL)aSelector;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (instancetype)alloc;
+ (instancetype)new;
+ (Class)class;
- (instancetype)init;
- (void)dealloc;
- (id)copy;
@end

NS_ASSUME_NONNULL_END
