// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/ShellExtension/ShellKeyboard.h"

#include "Desktop/Deadlines.h"
#include "Desktop/KeyRules.h"
#include "Desktop/Linux/Portals/RemoteKeys.h"
#include "Desktop/Linux/ShellExtension/ShellStrokes.h"
#include "Desktop/PlatformError.h"

#include <QElapsedTimer>
#include <QScopeGuard>

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// A window that has just got the focus takes a moment to announce its text field.
constexpr qint64 textFieldPatience = 1000; // ms

// From the shell, which forwards keys at its next frame, to an application that has handled them. Some
// applications take keys and text in no fixed order.
constexpr auto delivery = 60ms;

// The shell may drop keys that it hasn't delivered yet when their keyboard goes. While it is there, the top
// bar shows it.
constexpr auto keysIdleLimit = 2s;

bool needKeys(const QList<ShellStroke> &strokes)
{
    return std::any_of(strokes.cbegin(), strokes.cend(),
                       [](const ShellStroke &stroke) { return !stroke.symbols.isEmpty(); });
}

QString lostFocus(const DesktopWindow &window, bool hasBegun)
{
    const QString sentence = hasBegun ? u"“%1” lost the keyboard focus, so typing was stopped."_s
                                      : u"“%1” doesn't have the keyboard focus, so no keys were sent."_s;
    return sentence.arg(window.title);
}

QString noTextField(const DesktopWindow &window, bool hasBegun)
{
    const QString sentence = hasBegun ? u"No text field of “%1” has the focus, so typing was stopped."_s
                                      : u"No text field of “%1” has the focus, so nothing was typed."_s;
    return sentence.arg(window.title);
}

} // namespace

ShellKeyboard::ShellKeyboard(ShellExtension &extension, PortalBus &portals, WindowSystem &windowSystem,
                             FrontmostWindow frontmostWindow, Clock &clock)
    : m_extension(extension), m_portals(portals), m_windowSystem(windowSystem),
      m_frontmostWindow(std::move(frontmostWindow)), m_clock(clock)
{
    m_closingKeys.setSingleShot(true);
    m_closingKeys.setInterval(keysIdleLimit);
    QObject::connect(&m_closingKeys, &QTimer::timeout, &m_closingKeys, [this] { m_keys.reset(); });
}

ShellKeyboard::~ShellKeyboard() = default;

QCoro::Task<void> ShellKeyboard::post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                                      std::optional<RunningApplication> receiver)
{
    const QList<ShellStroke> plan = planShellStrokes(strokes);
    if (plan.isEmpty())
        co_return;
    m_closingKeys.stop();
    const auto closeLater = qScopeGuard([this] { m_closingKeys.start(); });
    Typing typing;
    typing.window = co_await target(m_windowSystem, m_frontmostWindow, receiver);
    if (needKeys(plan)) {
        co_await openKeys();
        // A question to the user has had the focus.
        typing.window = co_await target(m_windowSystem, m_frontmostWindow, receiver);
    }
    co_await waitForModifiers();
    for (const ShellStroke &stroke : plan) {
        if (stroke.symbols.isEmpty())
            co_await enter(typing, stroke.text);
        else
            co_await press(typing, stroke.symbols);
        typing.hasBegun = true;
        if (stroke.endsStroke)
            co_await m_clock.sleep(std::chrono::ceil<std::chrono::milliseconds>(pause));
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

QCoro::Task<void> ShellKeyboard::openKeys()
{
    if (!m_keys)
        m_keys = co_await RemoteKeys::open(m_portals);
}

QCoro::Task<void> ShellKeyboard::waitForModifiers()
{
    const KeyRules::ModifierPatience patience;
    bool isHeld = co_await m_extension.isModifierHeld();
    while (isHeld) {
        patience.requireTimeLeft(u"no keys were sent"_s);
        co_await m_clock.sleep(KeyRules::ModifierPatience::interval);
        isHeld = co_await m_extension.isModifierHeld();
    }
}

QCoro::Task<void> ShellKeyboard::press(Typing &typing, QList<std::uint32_t> symbols)
{
    const WindowSnapshot now = co_await m_windowSystem.snapshot();
    const DesktopWindow *active = now.active();
    if (!active || active->process != typing.window.process)
        throw PlatformError(lostFocus(typing.window, typing.hasBegun));
    try {
        co_await send(symbols);
    } catch (const PlatformError &) {
        m_keys.reset(); // releases them
        throw;
    }
}

// The last of the symbols is struck while the others are held.
QCoro::Task<void> ShellKeyboard::send(QList<std::uint32_t> symbols)
{
    using State = RemoteKeys::KeyState;
    const QList<std::uint32_t> key{symbols.takeLast()};
    co_await m_keys->set(symbols, State::Pressed);
    if (!symbols.isEmpty())
        co_await confirmModifiers(true);
    co_await m_keys->set(key, State::Pressed);
    co_await m_keys->set(key, State::Released);
    std::reverse(symbols.begin(), symbols.end());
    co_await m_keys->set(symbols, State::Released);
    if (!symbols.isEmpty())
        co_await confirmModifiers(false);
    co_await m_clock.sleep(delivery);
}

// The shell takes keys in their order, so it has also taken those before.
QCoro::Task<void> ShellKeyboard::confirmModifiers(bool areHeld)
{
    QElapsedTimer waiting;
    waiting.start();
    bool isHeld = co_await m_extension.isModifierHeld();
    while (isHeld != areHeld) {
        if (waiting.hasExpired(Deadlines::answer.count()))
            throw PlatformError(u"The desktop hasn't taken all keys."_s);
        co_await m_clock.sleep(5ms);
        isHeld = co_await m_extension.isModifierHeld();
    }
}

QCoro::Task<void> ShellKeyboard::enter(Typing &typing, QString text)
{
    QElapsedTimer waiting;
    waiting.start();
    ShellExtension::Entry entry = co_await m_extension.enterText(typing.window.identifier, text);
    while (entry == ShellExtension::Entry::NoTextField && !waiting.hasExpired(textFieldPatience)) {
        co_await m_clock.sleep(20ms);
        entry = co_await m_extension.enterText(typing.window.identifier, text);
    }
    if (entry == ShellExtension::Entry::NoFocus || entry == ShellExtension::Entry::Interrupted)
        throw PlatformError(
            lostFocus(typing.window, typing.hasBegun || entry == ShellExtension::Entry::Interrupted));
    if (entry == ShellExtension::Entry::NoTextField)
        throw PlatformError(noTextField(typing.window, typing.hasBegun));
}
