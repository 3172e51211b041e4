// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSObject.h>

// What `for … in` is compiled to.
typedef struct
{
    unsigned long state;
    __unsafe_unretained id _Nullable *_Nullable itemsPtr;
    unsigned long *_Nullable mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(nonnull NSFastEnumerationState *)state
                                  objects:(__unsafe_unretained id _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)length;
@end
