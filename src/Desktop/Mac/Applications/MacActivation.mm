// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Applications/MacActivation.h"

#import <AppKit/AppKit.h>

namespace {

// From macOS 14 on there is a politer call, which leaves another application in front unless that one gives
// way.
void activate()
{
    [NSApp activateIgnoringOtherApps:YES];
}

} // namespace

struct MacActivation::Launch
{
    bool isActivationDue = false;
    id<NSObject> observation = nil;
};

MacActivation::MacActivation() : m_launch(std::make_shared<Launch>())
{
    const std::weak_ptr<Launch> launch = m_launch;
    m_launch->observation =
        [NSNotificationCenter.defaultCenter addObserverForName:NSApplicationDidFinishLaunchingNotification
                                                        object:nil
                                                         queue:nil
                                                    usingBlock:^(NSNotification *) {
                                                      const auto alive = launch.lock();
                                                      if (alive && alive->isActivationDue)
                                                          activate();
                                                    }];
}

MacActivation::~MacActivation()
{
    [NSNotificationCenter.defaultCenter removeObserver:m_launch->observation];
}

void MacActivation::request()
{
    // Activated before it has been launched, an application has a menu bar that doesn't answer.
    if (NSApp.running)
        activate();
    else
        m_launch->isActivationDue = true;
}
