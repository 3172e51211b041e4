// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <AppKit/NSRunningApplication.h>
#include <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

extern "C" NSNotificationName NSWorkspaceDidActivateApplicationNotification;
extern "C" NSString *const NSWorkspaceApplicationKey;

@interface NSWorkspaceOpenConfiguration : NSObject <NSCopying>
@property BOOL activates;
+ (instancetype)configuration;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace *sharedWorkspace;
@property(readonly, strong) NSNotificationCenter *notificationCenter;
@property(readonly, copy) NSArray<NSRunningApplication *> *runningApplications;
@property(nullable, readonly, strong) NSRunningApplication *frontmostApplication;
- (BOOL)openURL:(NSURL *)url;
- (void)openURL:(NSURL *)url
        configuration:(NSWorkspaceOpenConfiguration *)configuration
    completionHandler:
        (void (^_Nullable)(NSRunningApplication *_Nullable application, NSError *_Nullable error))handler;
- (void)openURLs:(NSArray<NSURL *> *)urls
    withApplicationAtURL:(NSURL *)applicationUrl
           configuration:(NSWorkspaceOpenConfiguration *)configuration
       completionHandler:
           (void (^_Nullable)(NSRunningApplication *_Nullable application, NSError *_Nullable error))handler;
- (void)openApplicationAtURL:(NSURL *)applicationUrl
               configuration:(NSWorkspaceOpenConfiguration *)configuration
           completionHandler:(void (^_Nullable)(NSRunningApplication *_Nullable application,
                                                NSError *_Nullable error))handler;
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL *> *)urls;
@end

NS_ASSUME_NONNULL_END
