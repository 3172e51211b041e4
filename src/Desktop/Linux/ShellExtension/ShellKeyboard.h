// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Linux/Portals/PortalBus.h"
#include "Desktop/Linux/ShellExtension/ShellExtension.h"
#include "Desktop/Linux/Typing/ReceiverKeyboard.h"

#include <QTimer>

#include <memory>

class RemoteKeys;

// The keyboard of a desktop with our shell extension: text goes to the focused text field as from an input
// method, whatever the layout; keys go through a portal. All arguments must outlive this
// object. Thread: main.
class ShellKeyboard : public ReceiverKeyboard
{
public:
    ShellKeyboard(ShellExtension &extension, PortalBus &portals, WindowSystem &windowSystem,
                  FrontmostWindow frontmostWindow, Clock &clock);
    ~ShellKeyboard() override;

    // The first time that keys are needed, the desktop asks the user.
    QCoro::Task<void> post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                           std::optional<RunningApplication> receiver) override;
    QCoro::Task<bool> canSendKeys() override;

private:
    // What went wrong depends on whether something was typed before.
    struct Typing
    {
        DesktopWindow window;
        bool hasBegun = false;
    };

    QCoro::Task<void> openKeys();
    QCoro::Task<void> waitForModifiers();
    QCoro::Task<void> press(Typing &typing, QList<std::uint32_t> symbols);
    QCoro::Task<void> send(QList<std::uint32_t> symbols);
    QCoro::Task<void> confirmModifiers(bool areHeld);
    QCoro::Task<void> enter(Typing &typing, QString text);

    ShellExtension &m_extension;
    PortalBus &m_portals;
    WindowSystem &m_windowSystem;
    FrontmostWindow m_frontmostWindow;
    Clock &m_clock;
    std::unique_ptr<RemoteKeys> m_keys;
    QTimer m_closingKeys;
};
