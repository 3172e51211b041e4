// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Session/MacProgramInstance.h"

#include <QStandardPaths>

#include <AppKit/AppKit.h>

#include <functional>

using namespace Qt::StringLiterals;

// Qt forwards to an existing delegate the calls that it implements.
@interface OrvaneApplicationDelegate : NSObject <NSApplicationDelegate>
@property(nonatomic) std::function<void()> reopened;
@end

@implementation OrvaneApplicationDelegate

- (BOOL)applicationShouldHandleReopen:(NSApplication *)sender hasVisibleWindows:(BOOL)hasVisibleWindows
{
    Q_UNUSED(sender)
    if (!hasVisibleWindows && self.reopened)
        self.reopened();
    return YES;
}

@end

struct MacProgramInstance::Delegate
{
    // NSApplication holds a weak reference.
    OrvaneApplicationDelegate *const delegate = [[OrvaneApplicationDelegate alloc] init];
};

MacProgramInstance::MacProgramInstance()
    : SocketProgramInstance(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                            u"/Orvane"_s),
      m_delegate(std::make_unique<Delegate>())
{
    m_delegate->delegate.reopened = [this] {
        // Deferred, since AppKit waits for the delegate to return.
        QMetaObject::invokeMethod(
            this, [this] { Q_EMIT activated(QString()); }, Qt::QueuedConnection);
    };
    [NSApplication sharedApplication].delegate = m_delegate->delegate;
}

MacProgramInstance::~MacProgramInstance()
{
    m_delegate->delegate.reopened = nullptr;
}
