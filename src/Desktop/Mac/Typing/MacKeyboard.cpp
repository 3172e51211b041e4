// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Typing/MacKeyboard.h"

#include "Desktop/KeyRules.h"
#include "Desktop/Mac/CoreFoundationReference.h"
#include "Desktop/Mac/Typing/TypedText.h"
#include "Desktop/PlatformError.h"

#include <ApplicationServices/ApplicationServices.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// EventFlag values equal the platform's.
static_assert(static_cast<CGEventFlags>(EventFlag::Command) == kCGEventFlagMaskCommand);
static_assert(static_cast<CGEventFlags>(EventFlag::Shift) == kCGEventFlagMaskShift);
static_assert(static_cast<CGEventFlags>(EventFlag::Alternate) == kCGEventFlagMaskAlternate);
static_assert(static_cast<CGEventFlags>(EventFlag::Control) == kCGEventFlagMaskControl);

using EventSource = CoreFoundationReference<CGEventSourceRef>;

enum class Direction { Up, Down };

void postEvent(const EventSource &source, const KeyStroke &stroke, Direction direction)
{
    const auto event = CoreFoundationReference<CGEventRef>::adopted(
        CGEventCreateKeyboardEvent(source.get(), stroke.virtualKey, direction == Direction::Down));
    if (!event)
        return;
    // Set even if empty: a new event inherits the flags of held keys, and text with Command is a shortcut.
    CGEventSetFlags(event.get(), static_cast<CGEventFlags>(stroke.flags.toInt()));
    if (!stroke.text.isEmpty())
        CGEventKeyboardSetUnicodeString(event.get(), static_cast<UniCharCount>(stroke.text.size()),
                                        stroke.text.utf16());
    CGEventPost(kCGHIDEventTap, event.get());
}

bool isModifierHeld()
{
    constexpr CGEventFlags modifiers =
        kCGEventFlagMaskCommand | kCGEventFlagMaskShift | kCGEventFlagMaskAlternate | kCGEventFlagMaskControl;
    return CGEventSourceFlagsState(kCGEventSourceStateHIDSystemState) & modifiers;
}

} // namespace

MacKeyboard::MacKeyboard(MacWorkspace &workspace, Clock &clock) : m_workspace(workspace), m_clock(clock) {}

QCoro::Task<void> MacKeyboard::post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                                    std::optional<RunningApplication> receiver)
{
    if (strokes.isEmpty())
        co_return;
    // Without the permission, the system silently drops the keys.
    if (!AXIsProcessTrusted())
        throw PlatformError(u"macOS doesn't let Orvane press keys: allow it in System Settings, Privacy & "
                            "Security, Accessibility."_s);
    const std::optional<RunningApplication> target = co_await m_workspace.frontmostApplication();
    KeyRules::requireInFront(receiver, target);
    co_await m_workspace.activate(*target);
    co_await waitForUsersModifiers();
    const auto source = EventSource::adopted(CGEventSourceCreate(kCGEventSourceStateCombinedSessionState));
    const QList<KeyStroke> events = TypedText::fitted(strokes);
    for (const KeyStroke &stroke : events) {
        if (!m_workspace.hasKeys(*target))
            throw PlatformError(
                u"“%1” lost the keyboard focus, so no more keys were sent."_s.arg(target->shownName()));
        postEvent(source, stroke, Direction::Down);
        postEvent(source, stroke, Direction::Up);
        if (pause > 0us)
            co_await m_clock.sleep(std::chrono::ceil<std::chrono::milliseconds>(pause));
    }
}

QCoro::Task<void> MacKeyboard::waitForUsersModifiers()
{
    const KeyRules::ModifierPatience patience;
    while (isModifierHeld()) {
        patience.requireTimeLeft(u"no keys were sent"_s);
        co_await m_clock.sleep(KeyRules::ModifierPatience::interval);
    }
}
