// SPDX-License-Identifier: Apache-2.0
// expected: requires a bridged cast
#import <Foundation/Foundation.h>

NSString *text(CFStringRef string)
{
    return (NSString *)string;
}
