// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Applications/MacActivation.h"

#import <AppKit/AppKit.h>

namespace {

// Deprecated in macOS 14, but its replacement only activates if the active application yields.
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
    // If activated before it has finished launching, an application's menu bar doesn't respond.
    if (NSApp.running)
        activate();
    else
        m_launch->isActivationDue = true;
}
