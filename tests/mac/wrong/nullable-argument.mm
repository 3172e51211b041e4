// SPDX-License-Identifier: Apache-2.0
// expected: implicit conversion from nullable pointer
#import <AppKit/AppKit.h>

NSArray<NSRunningApplication *> *others()
{
    return [NSRunningApplication runningApplicationsWithBundleIdentifier:NSBundle.mainBundle.bundleIdentifier];
}
