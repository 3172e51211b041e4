// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Session/MacSession.h"

#include <CoreGraphics/CoreGraphics.h>

#import <Foundation/Foundation.h>

QCoro::Task<bool> MacSession::isLocked()
{
    NSDictionary *session = (__bridge_transfer NSDictionary *)CGSessionCopyCurrentDictionary();
    // Absent while the screen is unlocked.
    NSNumber *isLocked = session[@"CGSSessionScreenIsLocked"];
    co_return isLocked.boolValue;
}
