// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Applications/MacFrontmost.h"

#import <AppKit/AppKit.h>

struct MacFrontmost::Memory
{
    NSRunningApplication *last = nil; // never this program
    id<NSObject> observation = nil;

    void remember(NSRunningApplication *application)
    {
        if (application && ![application isEqual:NSRunningApplication.currentApplication])
            last = application;
    }
};

MacFrontmost::MacFrontmost() : m_memory(std::make_shared<Memory>())
{
    m_memory->remember(NSWorkspace.sharedWorkspace.frontmostApplication);
    const std::weak_ptr<Memory> memory = m_memory;
    m_memory->observation = [NSWorkspace.sharedWorkspace.notificationCenter
        addObserverForName:NSWorkspaceDidActivateApplicationNotification
                    object:nil
                     queue:NSOperationQueue.mainQueue
                usingBlock:^(NSNotification *notification) {
                  if (const auto alive = memory.lock())
                      alive->remember(notification.userInfo[NSWorkspaceApplicationKey]);
                }];
}

MacFrontmost::~MacFrontmost()
{
    [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:m_memory->observation];
}

bool MacFrontmost::isOurs() const
{
    return [NSWorkspace.sharedWorkspace.frontmostApplication isEqual:NSRunningApplication.currentApplication];
}

NSRunningApplication *MacFrontmost::application() const
{
    NSRunningApplication *front = NSWorkspace.sharedWorkspace.frontmostApplication;
    m_memory->remember(front);
    NSRunningApplication *last = m_memory->last;
    return front && !last.terminated ? last : nil;
}
