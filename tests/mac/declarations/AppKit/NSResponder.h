// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@class NSMenu;

@interface NSResponder : NSObject
@property(nullable, assign) NSResponder *nextResponder;
@property(nullable, strong) NSMenu *menu;
@end

NS_ASSUME_NONNULL_END
