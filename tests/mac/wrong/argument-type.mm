// SPDX-License-Identifier: Apache-2.0
// expected: parameter of type 'NSURL * _Nonnull'
#import <AppKit/AppKit.h>

bool opens(NSString *text)
{
    return [NSWorkspace.sharedWorkspace openURL:text];
}
