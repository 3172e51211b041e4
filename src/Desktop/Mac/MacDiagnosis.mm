// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/MacDiagnosis.h"

#include "Desktop/Mac/Applications/MacWindowList.h"
#include "Desktop/Mac/MacHotKeys.h"
#include "Desktop/Mac/MacScreenAccess.h"
#include "Desktop/Mac/Window/MacDisplay.h"

#import <AppKit/AppKit.h>
#include <ApplicationServices/ApplicationServices.h>

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint16_t spaceBar = 49;

QString allowIn(const QString &pane)
{
    return u"Allow Orvane, or the terminal that you start it in, in System Settings, Privacy & Security, %1."_s
        .arg(pane);
}

DiagnosticCheck session()
{
    const DiagnosticCheck check{u"session"_s, u"Session"_s};
    if (MacDisplay::isPresent())
        return check.working(u"A macOS desktop."_s);
    return check.absent(u"There is no desktop here."_s, u"Log in at the screen, and start Orvane there."_s);
}

DiagnosticCheck accessibility()
{
    const DiagnosticCheck check{u"accessibility"_s, u"Accessibility"_s};
    if (AXIsProcessTrusted())
        return check.working(u"Orvane may press keys, and read and operate other applications."_s);
    return check.broken(u"Orvane may not press keys, nor read or operate other applications."_s,
                        allowIn(u"Accessibility"_s));
}

QCoro::Task<DiagnosticCheck> screenshot()
{
    const DiagnosticCheck check{u"screenshot"_s, u"Screenshots"_s};
    MacWindowList windowList;
    const bool isGranted = co_await MacScreenAccess::isGranted(windowList);
    if (isGranted)
        co_return check.working(u"Orvane may take pictures of the screen."_s);
    co_return check.broken(u"Orvane may not take pictures of other applications' windows."_s,
                           allowIn(u"Screen Recording"_s));
}

// Whether another Orvane process runs, which then holds the hot key.
bool isOrvaneRunning()
{
    NSString *const identifier = NSBundle.mainBundle.bundleIdentifier;
    if (!identifier)
        return false;
    NSRunningApplication *const thisProcess = NSRunningApplication.currentApplication;
    for (NSRunningApplication *each in
         [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier]) {
        if (![each isEqual:thisProcess])
            return true;
    }
    return false;
}

// Only an attempt to register shows whether the key is available; it is released at once.
QCoro::Task<DiagnosticCheck> hotKey()
{
    const DiagnosticCheck check{u"hot-key"_s, u"Hot key"_s, DiagnosticCheck::Need::Comfort};
    const HotKeyModifiers modifiers = HotKeyModifier::Option;
    const HotKeyIdentifier identifier{fourCharacterCode("ORVN"), 2};
    const std::function<void()> nothing = [] {};
    MacHotKeys hotKeys;
    const std::shared_ptr<HotKeyReference> reference =
        co_await hotKeys.registerHotKey(spaceBar, modifiers, identifier, nothing);
    if (reference)
        co_return check.working(u"Orvane can have Option+Space."_s);
    if (isOrvaneRunning())
        co_return check.working(u"Option+Space is taken, most likely by the Orvane that is running."_s);
    co_return check.limited(
        u"Option+Space is taken by another program."_s,
        u"Free it in that program's settings, or open Orvane from the Dock or with: orvane --toggle"_s);
}

} // namespace

QCoro::Task<QList<DiagnosticCheck>> MacDiagnosis::examine()
{
    QList<DiagnosticCheck> checks{session()};
    if (checks.constFirst().isObstacle())
        co_return checks;
    const DiagnosticCheck hotKeyCheck = co_await hotKey();
    const DiagnosticCheck screenshotCheck = co_await screenshot();
    checks << accessibility() << hotKeyCheck << screenshotCheck;
    co_return checks;
}
