// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <AppKit/NSResponder.h>
#include <Foundation/NSArray.h>
#include <Foundation/NSGeometry.h>

NS_ASSUME_NONNULL_BEGIN

@class NSWindow;

typedef NS_OPTIONS(NSUInteger, NSAutoresizingMaskOptions) {
    NSViewNotSizable = 0,
    NSViewMinXMargin = 1,
    NSViewWidthSizable = 2,
    NSViewMaxXMargin = 4,
    NSViewMinYMargin = 8,
    NSViewHeightSizable = 16,
    NSViewMaxYMargin = 32,
};

typedef NS_ENUM(NSInteger, NSWindowOrderingMode) {
    NSWindowAbove = 1,
    NSWindowBelow = -1,
    NSWindowOut = 0,
};

@interface NSView : NSResponder
@property(nullable, readonly, assign) NSWindow *window;
@property(nullable, readonly, assign) NSView *superview;
@property(copy) NSArray<__kindof NSView *> *subviews;
@property(getter=isHidden) BOOL hidden;
@property NSAutoresizingMaskOptions autoresizingMask;
@property NSRect frame;
@property NSRect bounds;
@property(readonly, getter=isOpaque) BOOL opaque;
@property(readonly) BOOL mouseDownCanMoveWindow;
- (instancetype)initWithFrame:(NSRect)frame NS_DESIGNATED_INITIALIZER;
- (void)addSubview:(NSView *)view;
- (void)addSubview:(NSView *)view
        positioned:(NSWindowOrderingMode)place
        relativeTo:(nullable NSView *)otherView;
- (void)removeFromSuperview;
@end

NS_ASSUME_NONNULL_END
