// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/X11Typist.h"

#include "Desktop/KeyRules.h"
#include "Desktop/Linux/Typing/X11Keyboard.h"
#include "Desktop/Linux/Typing/X11UserKeyboard.h"
#include "Desktop/PlatformError.h"

#include <QScopeGuard>

#include <thread>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// Browsers mix up faster keys.
constexpr auto keyPace = 1ms;

// Applications look up a key's symbols with a delay; until then, the keymap must not change. Some confirm
// with a ping that they have, but an input method in between may still be behind.
constexpr auto symbolHold = 180ms;
constexpr auto slowestApplication = 3000ms;
constexpr auto firstAnswer = 200ms;

// A menu grabs the keyboard before its window is visible.
constexpr auto openingMenu = 300ms;

// `consequence`: see KeyRules::ModifierPatience.
void waitForUsersModifiers(const X11Keyboard &keyboard, const QString &consequence)
{
    const KeyRules::ModifierPatience patience;
    while (keyboard.isModifierHeld()) {
        patience.requireTimeLeft(consequence);
        std::this_thread::sleep_for(KeyRules::ModifierPatience::interval);
    }
}

void requireSameLayout(const X11Keyboard &keyboard)
{
    if (keyboard.hasLayoutChanged())
        throw PlatformError(u"The keyboard layout changed, so typing was stopped."_s);
}

} // namespace

X11Typist::X11Typist(X11Connection &connection, X11Windows &windows, const std::atomic_bool &isStopped,
                     std::chrono::milliseconds limit)
    : m_connection(connection), m_windows(windows), m_isStopped(isStopped),
      m_deadline(std::chrono::steady_clock::now() + limit)
{
}

void X11Typist::type(const QList<KeyStroke> &strokes, std::chrono::microseconds pause,
                     const DesktopWindow &target)
{
    m_target = target;
    X11Keyboard keyboard(m_connection);
    keyboard.takeBackAbandonedSymbols();
    const KeyboardLayout layout = keyboard.layout();
    m_modifierCodes = layout.modifierCodes;
    const QList<TypingBatch> batches = planTyping(strokes, layout);
    waitForUsersModifiers(keyboard, u"no keys were sent"_s);
    if (!m_windows.hasKeys(m_target))
        throw PlatformError(
            u"“%1” doesn't have the keyboard focus, so no keys were sent."_s.arg(m_target.title));
    const X11UserKeyboard users(m_connection, keyboard.device());
    const bool lendsSymbols = !batches.first().lentSymbols.isEmpty() || batches.size() > 1;
    m_tellsWhenHandled = (lendsSymbols || users.hasOtherMap()) && m_target.answersPings &&
                         m_connection.waitUntilHandled(m_target.identifier, firstAnswer);
    requireFreeKeyboard(u"no keys were sent"_s);
    keyboard.releaseLocks();
    const auto end = qScopeGuard([this, &users] { putBack(users); });
    for (const TypingBatch &batch : batches)
        typeBatch(keyboard, batch, pause);
    m_connection.requireAlive();
}

bool X11Typist::waitUntilHandled() const
{
    return m_target.answersPings && m_connection.waitUntilHandled(m_target.identifier, firstAnswer);
}

void X11Typist::typeBatch(X11Keyboard &keyboard, const TypingBatch &batch, std::chrono::microseconds pause)
{
    requireSameLayout(keyboard);
    keyboard.lendSymbols(batch.lentSymbols);
    // Also if typing ends early: the keys sent so far must still be read correctly.
    struct Hold
    {
        X11Typist &typist;
        bool isNeeded;
        ~Hold()
        {
            if (isNeeded)
                typist.holdSymbols();
        }
    };
    const Hold hold{*this, !batch.lentSymbols.isEmpty()};
    for (const PlannedKey &key : batch.keys) {
        requireTarget();
        requireSameLayout(keyboard);
        waitForUsersModifiers(keyboard, u"typing was stopped"_s);
        typeKey(keyboard, key);
        std::this_thread::sleep_for(keyPace);
        if (key.endsStroke)
            std::this_thread::sleep_for(pause);
    }
}

// Returns whether the application has confirmed that it handled all keys.
bool X11Typist::holdSymbols() const
{
    const auto lastKey = std::chrono::steady_clock::now();
    const bool isHandled =
        m_tellsWhenHandled && m_connection.waitUntilHandled(m_target.identifier, slowestApplication);
    std::this_thread::sleep_until(lastKey + symbolHold);
    return isHandled;
}

// Without confirmation (Qt applications reply only to the window manager), the keymap is left to the user's
// next key, since the application could misread the sent ones.
void X11Typist::putBack(const X11UserKeyboard &users) const
{
    if (users.hasOtherMap() && holdSymbols())
        users.putBack();
}

void X11Typist::typeKey(X11Keyboard &keyboard, const PlannedKey &key)
{
    QList<std::uint8_t> modifiers;
    for (const ModifierKey each :
         {ModifierKey::Control, ModifierKey::Alternate, ModifierKey::Shift, ModifierKey::ThirdLevel}) {
        if (key.modifiers.testFlag(each))
            modifiers.append(m_modifierCodes.value(each));
    }
    for (const std::uint8_t code : modifiers)
        keyboard.press(code);
    keyboard.press(key.code);
    keyboard.release(key.code);
    for (auto code = modifiers.crbegin(); code != modifiers.crend(); ++code)
        keyboard.release(*code);
    keyboard.flush();
}

void X11Typist::requireTarget() const
{
    m_connection.requireAlive();
    if (m_isStopped || std::chrono::steady_clock::now() >= m_deadline)
        throw PlatformError(u"Typing took too long and was stopped."_s);
    if (!m_windows.isActive(m_target))
        throw PlatformError(u"“%1” lost the keyboard focus, so typing was stopped."_s.arg(m_target.title));
    requireFreeKeyboard(u"typing was stopped"_s);
}

// Text for one program must never end up in another's password field.
void X11Typist::requireFreeKeyboard(const QString &consequence) const
{
    const auto end = std::chrono::steady_clock::now() + openingMenu;
    while (m_windows.isKeyboardGrabbedFrom(m_target)) {
        if (std::chrono::steady_clock::now() >= end)
            throw PlatformError(
                u"Another program, or the locked screen, has taken over the keyboard, so %1."_s.arg(
                    consequence));
        std::this_thread::sleep_for(5ms);
    }
}
