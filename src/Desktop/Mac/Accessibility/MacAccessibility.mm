// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Accessibility/MacAccessibility.h"

#include "Desktop/Mac/Accessibility/MacAccessibilityTree.h"
#include "Desktop/Mac/Applications/MacApplications.h"
#include "Desktop/Mac/CoreFoundationReference.h"
#include "Desktop/PlatformError.h"

#import <AppKit/AppKit.h>
#include <ApplicationServices/ApplicationServices.h>

using namespace Qt::StringLiterals;

MacAccessibility::MacAccessibility(Activate activate)
    : m_activate(std::move(activate)),
      m_queue(std::make_shared<MacQueue>(u"desktop.accessibility"_s, u"The accessibility service"_s))
{
    // On the system-wide element, the timeout applies to all messages of this process.
    const auto system = CoreFoundationReference<AXUIElementRef>::adopted(AXUIElementCreateSystemWide());
    const std::chrono::duration<float> limit = MacAccessibilityTree::messageLimit;
    AXUIElementSetMessagingTimeout(system.get(), limit.count());
}

QCoro::Task<bool> MacAccessibility::isProcessTrusted()
{
    const bool isTrusted = AXIsProcessTrusted();
    co_return isTrusted;
}

QCoro::Task<void> MacAccessibility::requestTrust()
{
    const void *keys[] = {kAXTrustedCheckOptionPrompt};
    const void *values[] = {kCFBooleanTrue};
    const auto options = CoreFoundationReference<CFDictionaryRef>::adopted(
        CFDictionaryCreate(kCFAllocatorDefault, keys, values, 1, &kCFTypeDictionaryKeyCallBacks,
                           &kCFTypeDictionaryValueCallBacks));
    AXIsProcessTrustedWithOptions(options.get());
    co_return;
}

QCoro::Task<std::shared_ptr<AccessibilityTree>>
MacAccessibility::applicationTree(RunningApplication application)
{
    const qint64 process = application.processIdentifier;
    NSRunningApplication *running = MacApplications::running(process);
    if (!running)
        throw PlatformError(u"The application has quit."_s);
    const QString name = MacApplications::described(running).localizedName.value_or(u"The application"_s);
    const auto root = CoreFoundationReference<AXUIElementRef>::adopted(
        AXUIElementCreateApplication(static_cast<pid_t>(process)));
    const auto activateThis = [activate = m_activate, process] { return activate(process); };
    co_return std::make_shared<MacAccessibilityTree>(root, name, m_queue, activateThis);
}
