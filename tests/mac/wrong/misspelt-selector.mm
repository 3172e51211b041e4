// SPDX-License-Identifier: Apache-2.0
// expected: no visible @interface for 'NSWorkspace' declares the selector 'openUrl:'
#import <AppKit/AppKit.h>

bool opens(NSURL *url)
{
    return [NSWorkspace.sharedWorkspace openUrl:url];
}
