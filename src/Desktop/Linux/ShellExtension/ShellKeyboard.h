// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/ShellExtension/ShellKeys.h"
#include "Desktop/Linux/ShellExtension/ShellStrokes.h"
#include "Desktop/Linux/Typing/ReceiverKeyboard.h"

// The keyboard of a desktop with our shell extension: text goes to the focused text field as from an input
// method, whatever the layout; keys go through a portal. All arguments must outlive this
// object. Thread: main.
class ShellKeyboard : public ReceiverKeyboard
{
public:
    ShellKeyboard(ShellExtension &extension, PortalBus &portals, WaylandConnection &connection,
                  WindowSystem &windowSystem, FrontmostWindow frontmostWindow, Clock &clock);

    // The first time that keys are needed, the desktop asks the user.
    QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                           std::optional<RunningApplication> receiver) override;
    QCoro::Task<bool> canSendKeys() override;

private:
    // What went wrong depends on whether something was typed before.
    struct Typing
    {
        std::optional<RunningApplication> receiver;
        DesktopWindow window;
        bool hasBegun = false;

        QString consequence() const;
    };

    QCoro::Task<void> press(Typing &typing, KeyStroke stroke);
    QCoro::Task<void> requireFocus(const Typing &typing);
    QCoro::Task<void> enter(Typing &typing, QString text);

    ShellExtension &m_extension;
    WindowSystem &m_windowSystem;
    FrontmostWindow m_frontmostWindow;
    Clock &m_clock;
    ShellKeys m_keys;
};
