// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <AppKit/NSAppearance.h>
#include <AppKit/NSMenu.h>
#include <AppKit/NSResponder.h>
#include <AppKit/NSRunningApplication.h>

NS_ASSUME_NONNULL_BEGIN

@class NSApplication;

@protocol NSApplicationDelegate <NSObject>
@optional
- (BOOL)applicationShouldHandleReopen:(NSApplication *)sender hasVisibleWindows:(BOOL)hasVisibleWindows;
@end

@interface NSApplication : NSResponder
@property(class, readonly, strong) __kindof NSApplication *sharedApplication;
@property(nullable, weak) id<NSApplicationDelegate> delegate;
@property(nullable, strong) NSMenu *mainMenu;
@property(nullable, strong) NSMenu *windowsMenu;
@property(readonly, getter=isRunning) BOOL running;
@property(readonly, getter=isActive) BOOL active;
@property(readonly, getter=isHidden) BOOL hidden;
@property(readonly, strong) NSAppearance *effectiveAppearance API_AVAILABLE(macos(10.14));
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activateIgnoringOtherApps:(BOOL)ignoresOthers;
- (void)yieldActivationToApplication:(NSRunningApplication *)application API_AVAILABLE(macos(14.0));
- (void)hide:(nullable id)sender;
- (void)terminate:(nullable id)sender;
@end

extern "C" __kindof NSApplication *_Null_unspecified NSApp;
extern "C" NSNotificationName NSApplicationDidFinishLaunchingNotification;

NS_ASSUME_NONNULL_END
