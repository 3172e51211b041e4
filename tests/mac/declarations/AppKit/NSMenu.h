// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <AppKit/NSMenuItem.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSMenu : NSObject <NSCopying>
@property(copy) NSString *title;
- (instancetype)initWithTitle:(NSString *)title NS_DESIGNATED_INITIALIZER;
- (void)addItem:(NSMenuItem *)item;
- (NSMenuItem *)addItemWithTitle:(NSString *)title
                          action:(nullable SEL)selector
                   keyEquivalent:(NSString *)key;
- (nullable NSMenuItem *)itemWithTitle:(NSString *)title;
@end

NS_ASSUME_NONNULL_END
