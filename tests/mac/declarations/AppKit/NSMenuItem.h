// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

@class NSMenu;

@interface NSMenuItem : NSObject <NSCopying>
@property(nullable, strong) NSMenu *submenu;
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property(copy) NSString *title;
@property(copy) NSString *keyEquivalent;
+ (NSMenuItem *)separatorItem;
@end

NS_ASSUME_NONNULL_END
