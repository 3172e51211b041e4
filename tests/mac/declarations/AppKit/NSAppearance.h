// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSArray.h>
#include <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSAppearanceName;

extern "C" NSAppearanceName const NSAppearanceNameAqua;
extern "C" NSAppearanceName const NSAppearanceNameDarkAqua API_AVAILABLE(macos(10.14));

@interface NSAppearance : NSObject <NSSecureCoding>
@property(readonly, copy) NSAppearanceName name;
- (nullable NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName> *)names
    API_AVAILABLE(macos(10.14));
@end

NS_ASSUME_NONNULL_END
