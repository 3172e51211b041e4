// SPDX-License-Identifier: Apache-2.0
// expected: 'activateFromApplication:options:' is only available on macOS 14.0 or newer
#import <AppKit/AppKit.h>

bool comesForward(NSRunningApplication *application)
{
    return [application activateFromApplication:NSRunningApplication.currentApplication options:0];
}
