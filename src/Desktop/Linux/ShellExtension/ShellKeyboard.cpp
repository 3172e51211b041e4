// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/ShellExtension/ShellKeyboard.h"

#include "Desktop/Linux/Wayland/KeyPace.h"
#include "Desktop/PlatformError.h"

#include <exception>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// A window that has just got the focus takes a moment to announce its text field.
constexpr qint64 textFieldPatience = 1000; // ms

// From the shell, which forwards keys at its next frame, to an application that has handled them.
constexpr auto delivery = 60ms;

// Keys before that have been handled.
constexpr qint64 keysPatience = 1000; // ms

QString lostFocus(const DesktopWindow &window, bool hasBegun)
{
    const QString sentence = hasBegun ? u"“%1” lost the keyboard focus, so typing was stopped."_s
                                      : u"“%1” doesn't have the keyboard focus, so no keys were sent."_s;
    return sentence.arg(window.title);
}

} // namespace

QString ShellKeyboard::Typing::consequence() const
{
    return hasBegun ? u"typing was stopped"_s : u"no keys were sent"_s;
}

ShellKeyboard::ShellKeyboard(ShellExtension &extension, PortalBus &portals, WaylandConnection &connection,
                             WindowSystem &windowSystem, FrontmostWindow frontmostWindow,
                             IsTerminal isTerminal, Clock &clock)
    : m_extension(extension), m_windowSystem(windowSystem), m_frontmostWindow(std::move(frontmostWindow)),
      m_isTerminal(std::move(isTerminal)), m_clock(clock), m_keys(extension, portals, connection, clock),
      m_application(clock)
{
}

QCoro::Task<void> ShellKeyboard::post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                                      std::optional<RunningApplication> receiver)
{
    const QList<ShellStroke> plan = planShellStrokes(strokes);
    if (plan.isEmpty())
        co_return;
    const Typing typing{receiver, std::chrono::ceil<std::chrono::milliseconds>(pause), {}, false};
    std::exception_ptr failure;
    try {
        co_await type(plan, typing);
    } catch (const PlatformError &) {
        failure = std::current_exception();
    }
    co_await m_keys.finish();
    if (failure)
        std::rethrow_exception(failure);
}

QCoro::Task<void> ShellKeyboard::type(QList<ShellStroke> plan, Typing typing)
{
    typing.window = co_await target(m_windowSystem, m_frontmostWindow, typing.receiver);
    co_await m_keys.waitForModifiers(typing.consequence());
    while (!plan.isEmpty()) {
        const ShellStroke next = plan.first();
        if (!next.isText()) {
            const QList<KeyStroke> key{next.stroke};
            co_await press(typing, key, Receiver::Application);
        } else if (!co_await enter(typing, next.stroke.text)) {
            // Nor will the rest of the text be taken.
            QList<KeyStroke> rest;
            for (const ShellStroke &stroke : std::as_const(plan))
                rest.append(stroke.stroke);
            co_await press(typing, rest, Receiver::Window);
            co_return;
        }
        typing.hasBegun = true;
        plan.removeFirst();
        if (next.endsStroke)
            co_await m_clock.sleep(typing.pause);
    }
}

// The user is asked when keys are first needed.
QCoro::Task<bool> ShellKeyboard::canSendKeys()
{
    try {
        co_await m_extension.windows();
        co_return true;
    } catch (const PlatformError &) {
        co_return false;
    }
}

// Some applications take keys and text in no fixed order.
QCoro::Task<void> ShellKeyboard::waitUntilKeysAreTaken(qint64 process)
{
    if (m_sinceKeys.isValid() && !m_sinceKeys.hasExpired(keysPatience))
        co_await m_application.wait(process);
    m_sinceKeys.invalidate();
}

// False if no text field takes the text.
QCoro::Task<bool> ShellKeyboard::enter(Typing &typing, QString text)
{
    using Entry = ShellExtension::Entry;
    co_await waitUntilKeysAreTaken(typing.window.process);
    QElapsedTimer waiting;
    waiting.start();
    Entry entry = co_await m_extension.enterText(typing.window.identifier, text);
    while (entry == Entry::NoTextField && !typing.hasBegun && !waiting.hasExpired(textFieldPatience)) {
        co_await m_clock.sleep(20ms);
        entry = co_await m_extension.enterText(typing.window.identifier, text);
    }
    if (entry == Entry::NoFocus)
        throw PlatformError(lostFocus(typing.window, typing.hasBegun));
    // Some applications would take the next text too early: before a key, or instead of this one.
    if (entry == Entry::Sent)
        co_await m_application.wait(typing.window.process);
    co_return entry != Entry::NoTextField;
}

QCoro::Task<void> ShellKeyboard::press(Typing &typing, QList<KeyStroke> strokes, Receiver receiver)
{
    co_await m_keys.open();
    // A question to the user may have had the focus.
    if (!typing.hasBegun)
        typing.window = co_await target(m_windowSystem, m_frontmostWindow, typing.receiver);
    const ShellKeys::Meaning keys = co_await m_keys.meaning();
    KeyPace pace;
    for (const PasteStep &step : planPasteSteps(strokes, keys.layout.keys, keys.ownCharacters)) {
        co_await m_clock.sleep(pace.pauseBefore(std::size_t(step.keys.size())));
        co_await requireReady(typing, keys.layout, receiver);
        if (step.text.isEmpty())
            co_await m_keys.press(step.keys, keys.layout.keys);
        else if (!co_await enter(typing, step.text))
            co_await paste(typing, step.text, keys.layout);
        typing.hasBegun = true;
        co_await m_clock.sleep(typing.pause);
    }
    co_await m_clock.sleep(delivery);
    m_sinceKeys.start();
}

QCoro::Task<void> ShellKeyboard::paste(Typing &typing, QString text, UserLayout layout)
{
    bool isTerminal = false;
    if (typing.receiver)
        isTerminal = co_await m_isTerminal(*typing.receiver);
    const PasteShortcut shortcut = isTerminal ? PasteShortcut::Terminal : PasteShortcut::Usual;
    ClipboardLoan &clipboard = m_keys.clipboard();
    co_await clipboard.lend(text);
    co_await requireReady(typing, layout, Receiver::Window);
    clipboard.expectReader();
    co_await m_keys.press(planPasteShortcut(shortcut, layout.keys), layout.keys);
    co_await clipboard.waitUntilRead(typing.window);
}

// Keys may be sent only then.
QCoro::Task<void> ShellKeyboard::requireReady(Typing &typing, UserLayout layout, Receiver receiver)
{
    co_await m_keys.waitForUser(layout, typing.consequence());
    const WindowSnapshot now = co_await m_windowSystem.snapshot();
    const DesktopWindow *active = now.active();
    const bool hasFocus =
        active && active->process == typing.window.process &&
        (receiver == Receiver::Application || active->identifier == typing.window.identifier);
    if (!hasFocus)
        throw PlatformError(lostFocus(typing.window, typing.hasBegun));
}
