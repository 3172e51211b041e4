// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/ShellExtension/ShellKeyboard.h"

#include "Desktop/Linux/Wayland/PasteSteps.h"
#include "Desktop/PlatformError.h"

#include <QElapsedTimer>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// A window that has just got the focus takes a moment to announce its text field.
constexpr qint64 textFieldPatience = 1000; // ms

// From the shell, which forwards keys at its next frame, to an application that has handled them. Some
// applications take keys and text in no fixed order.
constexpr auto delivery = 60ms;

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

QString ShellKeyboard::Typing::consequence() const
{
    return hasBegun ? u"typing was stopped"_s : u"no keys were sent"_s;
}

ShellKeyboard::ShellKeyboard(ShellExtension &extension, PortalBus &portals, WaylandConnection &connection,
                             WindowSystem &windowSystem, FrontmostWindow frontmostWindow, Clock &clock)
    : m_extension(extension), m_windowSystem(windowSystem), m_frontmostWindow(std::move(frontmostWindow)),
      m_clock(clock), m_keys(extension, portals, connection, clock)
{
}

QCoro::Task<void> ShellKeyboard::post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                                      std::optional<RunningApplication> receiver)
{
    const QList<ShellStroke> plan = planShellStrokes(strokes);
    if (plan.isEmpty())
        co_return;
    const auto closeLater = qScopeGuard([this] { m_keys.closeLater(); });
    Typing typing{receiver, {}, false};
    typing.window = co_await target(m_windowSystem, m_frontmostWindow, receiver);
    co_await m_keys.waitForModifiers(typing.consequence());
    for (const ShellStroke &next : plan) {
        if (next.isText())
            co_await enter(typing, next.stroke.text);
        else
            co_await press(typing, next.stroke);
        typing.hasBegun = true;
        if (next.endsStroke)
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

QCoro::Task<void> ShellKeyboard::press(Typing &typing, KeyStroke stroke)
{
    co_await m_keys.open();
    // A question to the user may have had the focus.
    if (!typing.hasBegun)
        typing.window = co_await target(m_windowSystem, m_frontmostWindow, typing.receiver);
    const UserLayout layout = co_await m_keys.layout();
    const QList<KeyStroke> strokes{stroke};
    for (const PasteStep &step : planPasteSteps(strokes, layout.keys, OwnCharacters::Typed)) {
        co_await m_keys.waitForUser(layout, typing.consequence());
        co_await requireFocus(typing);
        if (step.text.isEmpty())
            co_await m_keys.press(step.keys, layout.keys);
        else
            co_await enter(typing, step.text);
    }
    co_await m_clock.sleep(delivery);
}

QCoro::Task<void> ShellKeyboard::requireFocus(const Typing &typing)
{
    const WindowSnapshot now = co_await m_windowSystem.snapshot();
    const DesktopWindow *active = now.active();
    if (!active || active->process != typing.window.process)
        throw PlatformError(lostFocus(typing.window, typing.hasBegun));
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
