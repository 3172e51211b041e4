// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Window/MacProgramActivity.h"

#import <Foundation/Foundation.h>

struct MacProgramActivity::Activity
{
    explicit Activity(const QString &reason)
        : token([NSProcessInfo.processInfo
              beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                reason:reason.toNSString()])
    {
    }
    ~Activity() { [NSProcessInfo.processInfo endActivity:token]; }
    Activity(const Activity &) = delete;
    Activity &operator=(const Activity &) = delete;

    id<NSObject> const token;
};

MacProgramActivity::MacProgramActivity() = default;

MacProgramActivity::~MacProgramActivity() = default;

void MacProgramActivity::begin(const QString &reason)
{
    m_activity = std::make_unique<Activity>(reason);
}

void MacProgramActivity::end()
{
    m_activity.reset();
}
