// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Linux/Typing/ReceiverKeyboard.h"
#include "Desktop/Linux/Typing/TypingPlan.h"
#include "Desktop/Linux/Wayland/Connection.h"

#include <QElapsedTimer>

#include <span>

struct zwp_virtual_keyboard_v1;

// Sends keys through a virtual keyboard of a compositor with the protocol virtual-keyboard. Its keymap is its
// own and is replaced as needed, so any character can be typed, and shortcuts work whatever the user's layout
// is. Only Chromium truncates characters to 16 bits, which garbles emoji.
//
// In sway, each keyboard has its own state: modifiers held by the user don't change what is typed, so they
// are not waited for.
//
// Text is sent in chunks of at most 20 characters, and the receiver is checked again before each. If this
// program's own window is active, the application that was in front before is focused first. `connection`,
// `windowSystem` and `clock` must outlive this object. Thread: main.
class WaylandKeyboard : public ReceiverKeyboard
{
public:
    // Whether the application takes characters beyond U+FFFF. Chromium cuts them to 16 bits.
    using TakesEveryCharacter = std::function<QCoro::Task<bool>(RunningApplication)>;

    static bool isOfferedBy(const WaylandConnection &connection);

    // The compositor must offer the protocol.
    WaylandKeyboard(WaylandConnection &connection, WindowSystem &windowSystem,
                    FrontmostWindow frontmostWindow, TakesEveryCharacter takesEveryCharacter, Clock &clock);
    ~WaylandKeyboard() override;
    WaylandKeyboard(const WaylandKeyboard &) = delete;
    WaylandKeyboard &operator=(const WaylandKeyboard &) = delete;

    QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                           std::optional<RunningApplication> receiver) override;

    QCoro::Task<bool> canSendKeys() override;

private:
    QCoro::Task<void> waitUntilKnown();
    QCoro::Task<void> requireCharactersTaken(QList<KeyStroke> strokes, RunningApplication receiver);
    void send(std::span<const PlannedKey> keys, const QHash<std::uint8_t, std::uint32_t> &lentSymbols);
    void setKeymap(const QHash<std::uint8_t, std::uint32_t> &lentSymbols);
    void type(const PlannedKey &key);
    void sendKey(std::uint8_t code, std::uint32_t state);
    void setModifiers(ModifierKeys modifiers);

    WaylandConnection &m_connection;
    WindowSystem &m_windowSystem;
    FrontmostWindow m_frontmostWindow;
    TakesEveryCharacter m_takesEveryCharacter;
    Clock &m_clock;
    zwp_virtual_keyboard_v1 *m_keyboard = nullptr;
    QElapsedTimer m_age;
    std::optional<QHash<std::uint8_t, std::uint32_t>> m_lentSymbols; // in the keymap, if that is ours
};
