// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Pasting/IdleApplication.h"
#include "Desktop/Linux/ShellExtension/ShellKeys.h"
#include "Desktop/Linux/ShellExtension/ShellStrokes.h"
#include "Desktop/Linux/Typing/ReceiverKeyboard.h"

#include <QElapsedTimer>

// The keyboard of a desktop with our shell extension: text goes to the focused text field as from an input
// method, whatever the layout. Where none takes it so, it is typed with keys as far as the layout has its
// characters, and pasted otherwise. Keys go through a portal. All arguments must outlive this object.
// Thread: main.
class ShellKeyboard : public ReceiverKeyboard
{
public:
    // Whether the application is a terminal emulator, where Ctrl+V doesn't paste.
    using IsTerminal = std::function<QCoro::Task<bool>(RunningApplication)>;

    ShellKeyboard(ShellExtension &extension, PortalBus &portals, WaylandConnection &connection,
                  WindowSystem &windowSystem, FrontmostWindow frontmostWindow, IsTerminal isTerminal,
                  Clock &clock);

    // The first time that keys are needed, the desktop asks the user.
    QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                           std::optional<RunningApplication> receiver) override;
    QCoro::Task<bool> canSendKeys() override;

private:
    // What went wrong depends on whether something was typed before.
    struct Typing
    {
        std::optional<RunningApplication> receiver;
        std::chrono::milliseconds pause; // after each step
        DesktopWindow window;
        bool hasBegun = false;

        QString consequence() const;
    };

    // Keys may open another window of their application; the rest of a text never goes there.
    enum class Receiver { Application, Window };

    QCoro::Task<void> type(QList<ShellStroke> plan, Typing typing);
    QCoro::Task<void> waitUntilKeysAreTaken(qint64 process);
    QCoro::Task<bool> enter(Typing &typing, QString text);
    QCoro::Task<void> press(Typing &typing, QList<KeyStroke> strokes, Receiver receiver);
    QCoro::Task<void> paste(Typing &typing, QString text, UserLayout layout);
    QCoro::Task<void> requireReady(Typing &typing, UserLayout layout, Receiver receiver);

    ShellExtension &m_extension;
    WindowSystem &m_windowSystem;
    FrontmostWindow m_frontmostWindow;
    IsTerminal m_isTerminal;
    Clock &m_clock;
    ShellKeys m_keys;
    IdleApplication m_application;
    QElapsedTimer m_sinceKeys;
};
