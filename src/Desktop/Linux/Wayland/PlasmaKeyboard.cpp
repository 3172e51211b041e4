// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/PlasmaKeyboard.h"

#include "Desktop/KeyRules.h"
#include "Desktop/Linux/Wayland/FocusGuard.h"
#include "Desktop/Linux/Wayland/KeyPace.h"
#include "Desktop/PlatformError.h"

#include <QScopeGuard>

#include <fake-input-client-protocol.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

constexpr std::uint32_t version = 5; // from 4 on it has keys, from 5 on it can be destroyed

// Applications lose keys of a keyboard that they don't know yet.
constexpr auto introduction = 5ms;

constexpr std::uint8_t kernelOffset = 8; // XKB's keycodes are the kernel's plus this

} // namespace

bool PlasmaKeyboard::isOfferedBy(const WaylandConnection &connection)
{
    return connection.offers(org_kde_kwin_fake_input_interface, version) &&
           KeyStates::isOfferedBy(connection) && WaylandClipboard::isOfferedBy(connection);
}

PlasmaKeyboard::PlasmaKeyboard(WaylandConnection &connection, WindowSystem &windowSystem,
                               FrontmostWindow frontmostWindow, IsTerminal isTerminal, Clock &clock)
    : m_connection(connection), m_windowSystem(windowSystem), m_frontmostWindow(std::move(frontmostWindow)),
      m_isTerminal(std::move(isTerminal)), m_clock(clock), m_keymap(connection), m_keyStates(connection),
      m_clipboard(connection), m_loan(m_clipboard, clock),
      m_keys(connection.bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, version))
{
    // The texts are for a question to the user, which KWin doesn't ask.
    org_kde_kwin_fake_input_authenticate(m_keys, "Orvane", "");
    m_connection.flush();
    m_age.start();
}

PlasmaKeyboard::~PlasmaKeyboard()
{
    org_kde_kwin_fake_input_destroy(m_keys);
    m_connection.flush();
}

QCoro::Task<void> PlasmaKeyboard::post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                                       std::optional<RunningApplication> receiver)
{
    if (strokes.isEmpty())
        co_return;
    if (!m_age.hasExpired(introduction.count()))
        co_await m_clock.sleep(introduction);
    const Plan plan = co_await planFor(strokes, receiver);
    const DesktopWindow window = co_await target(m_windowSystem, m_frontmostWindow, receiver);
    const auto end = qScopeGuard([this] { m_loan.giveBack(); });
    KeyPace pace;
    FocusGuard guard(m_windowSystem, window);
    QString consequence = u"no keys were sent"_s;
    for (const PasteStep &step : plan.steps) {
        const bool isPasted = !step.text.isEmpty();
        co_await m_clock.sleep(pace.pauseBefore(std::size_t(step.keys.size())));
        if (isPasted)
            co_await m_loan.lend(step.text);
        co_await requireSameLayout(plan.layout);
        co_await waitForUsersModifiers(consequence);
        co_await guard.requireFocus();
        consequence = u"typing was stopped"_s;
        if (isPasted)
            co_await paste(plan, window);
        else
            send(step.keys, plan.layout.keys);
        co_await m_clock.sleep(std::chrono::ceil<std::chrono::milliseconds>(pause));
    }
    co_await m_connection.roundTrip();
}

QCoro::Task<PlasmaKeyboard::Plan> PlasmaKeyboard::planFor(QList<KeyStroke> strokes,
                                                          std::optional<RunningApplication> receiver)
{
    Plan plan;
    plan.layout = co_await layout();
    co_await m_keyStates.update();
    const OwnCharacters own = m_keyStates.isCapsLockOn() ? OwnCharacters::Pasted : OwnCharacters::Typed;
    plan.steps = planPasteSteps(strokes, plan.layout.keys, own);
    if (!receiver || !anyIsPasted(plan.steps))
        co_return plan;
    const bool isTerminal = co_await m_isTerminal(*receiver);
    const PasteShortcut shortcut = isTerminal ? PasteShortcut::Terminal : PasteShortcut::Usual;
    plan.pasteKeys = planPasteShortcut(shortcut, plan.layout.keys);
    co_return plan;
}

// The text is in the clipboard.
QCoro::Task<void> PlasmaKeyboard::paste(Plan plan, DesktopWindow receiver)
{
    m_loan.expectReader();
    send(plan.pasteKeys, plan.layout.keys);
    co_await m_loan.waitUntilRead(receiver);
}

QCoro::Task<bool> PlasmaKeyboard::canSendKeys()
{
    return m_connection.answers();
}

QCoro::Task<UserLayout> PlasmaKeyboard::layout()
{
    const std::uint32_t group = co_await m_layouts.activeGroup();
    co_return co_await m_keymap.layout(group);
}

QCoro::Task<void> PlasmaKeyboard::requireSameLayout(UserLayout layout)
{
    const std::uint32_t group = co_await m_layouts.activeGroup();
    m_keymap.requireSame(layout, group);
}

QCoro::Task<void> PlasmaKeyboard::waitForUsersModifiers(QString consequence)
{
    const KeyRules::ModifierPatience patience;
    co_await m_keyStates.update();
    while (m_keyStates.isModifierHeld()) {
        patience.requireTimeLeft(consequence);
        co_await m_clock.sleep(KeyRules::ModifierPatience::interval);
        co_await m_keyStates.update();
    }
}

// All at once: whatever happens later, no key remains pressed.
void PlasmaKeyboard::send(const QList<PlannedKey> &keys, const KeyboardLayout &layout)
{
    for (const PlannedKey &key : keys) {
        const QList<std::uint8_t> codes = codesOf(key, layout);
        for (const std::uint8_t code : codes)
            sendKey(code, WL_KEYBOARD_KEY_STATE_PRESSED);
        for (auto code = codes.crbegin(); code != codes.crend(); ++code)
            sendKey(*code, WL_KEYBOARD_KEY_STATE_RELEASED);
    }
    m_connection.flush();
}

void PlasmaKeyboard::sendKey(std::uint8_t code, std::uint32_t state)
{
    org_kde_kwin_fake_input_keyboard_key(m_keys, code - kernelOffset, state);
}
