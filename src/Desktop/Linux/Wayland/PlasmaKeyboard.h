// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Linux/Pasting/ClipboardLoan.h"
#include "Desktop/Linux/Pasting/PasteSteps.h"
#include "Desktop/Linux/Typing/ReceiverKeyboard.h"
#include "Desktop/Linux/Wayland/Clipboard.h"
#include "Desktop/Linux/Wayland/Connection.h"
#include "Desktop/Linux/Wayland/KeyStates.h"
#include "Desktop/Linux/Wayland/PlasmaLayouts.h"
#include "Desktop/Linux/Wayland/UserKeymap.h"

#include <QElapsedTimer>

#include <functional>

struct org_kde_kwin_fake_input;

// Sends keys through the protocol fake-input, which Plasma 6 offers to programs whose desktop entry names it.
// Its keys are those of the user's own layout, so all other characters are pasted; the clipboard is given
// back afterwards.
//
// All keyboards share the modifiers: those that the user holds are waited for. The receiver is checked again
// before every 20 keys and every text that is pasted. If this program's own window is active, the application
// that was in front before is focused first. `connection`, `windowSystem` and `clock` must outlive this
// object. Thread: main.
class PlasmaKeyboard : public ReceiverKeyboard
{
public:
    // Whether the application is a terminal emulator, where Ctrl+V doesn't paste.
    using IsTerminal = std::function<QCoro::Task<bool>(RunningApplication)>;

    static bool isOfferedBy(const WaylandConnection &connection);

    // The compositor must offer the protocols.
    PlasmaKeyboard(WaylandConnection &connection, WindowSystem &windowSystem, FrontmostWindow frontmostWindow,
                   IsTerminal isTerminal, Clock &clock);
    ~PlasmaKeyboard() override;
    PlasmaKeyboard(const PlasmaKeyboard &) = delete;
    PlasmaKeyboard &operator=(const PlasmaKeyboard &) = delete;

    QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                           std::optional<RunningApplication> receiver) override;
    QCoro::Task<bool> canSendKeys() override;

private:
    struct Plan
    {
        UserLayout layout;
        QList<PasteStep> steps;
        QList<PlannedKey> pasteKeys; // the application's shortcut, if a step is pasted
    };

    QCoro::Task<Plan> planFor(QList<KeyStroke> strokes, std::optional<RunningApplication> receiver);
    QCoro::Task<UserLayout> layout();
    QCoro::Task<void> requireSameLayout(UserLayout layout);
    QCoro::Task<void> waitForUsersModifiers(QString consequence);
    QCoro::Task<void> paste(Plan plan, DesktopWindow receiver);
    void send(const QList<PlannedKey> &keys, const KeyboardLayout &layout);
    void sendKey(std::uint8_t code, std::uint32_t state);

    WaylandConnection &m_connection;
    WindowSystem &m_windowSystem;
    FrontmostWindow m_frontmostWindow;
    IsTerminal m_isTerminal;
    Clock &m_clock;
    UserKeymap m_keymap;
    KeyStates m_keyStates;
    PlasmaLayouts m_layouts;
    WaylandClipboard m_clipboard;
    ClipboardLoan m_loan;
    org_kde_kwin_fake_input *m_keys = nullptr;
    QElapsedTimer m_age;
};
