// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSErrorDomain;

@interface NSError : NSObject <NSCopying, NSSecureCoding>
@property(readonly, copy) NSErrorDomain domain;
@property(readonly) NSInteger code;
@property(readonly, copy) NSString *localizedDescription;
@end

NS_ASSUME_NONNULL_END
