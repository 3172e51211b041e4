// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Linux/Pasting/ClipboardLoan.h"
#include "Desktop/Linux/Pasting/PasteSteps.h"
#include "Desktop/Linux/Portals/PortalBus.h"
#include "Desktop/Linux/ShellExtension/ShellExtension.h"
#include "Desktop/Linux/Wayland/UserKeymap.h"

#include <QTimer>

#include <memory>

class RemoteKeys;

// The keys of the user's layout, and the clipboard, on a desktop with our shell extension. Both go through a
// portal, while the compositor and the extension tell the layout. All arguments must outlive this object.
// Thread: main.
class ShellKeys
{
public:
    ShellKeys(ShellExtension &extension, PortalBus &portals, WaylandConnection &connection, Clock &clock);
    ~ShellKeys();
    ShellKeys(const ShellKeys &) = delete;
    ShellKeys &operator=(const ShellKeys &) = delete;

    // Needed before `press`. The first time, the desktop asks the user. Throws PlatformError.
    QCoro::Task<void> open();

    // Call it after `open`, when no key follows for the time being; gives the clipboard back.
    QCoro::Task<void> finish();

    // What keys type at the moment.
    struct Meaning
    {
        UserLayout layout;
        OwnCharacters ownCharacters = OwnCharacters::Typed;
    };
    QCoro::Task<Meaning> meaning();

    // Throws PlatformError if the user hasn't allowed to use the clipboard; the desktop asks again next time.
    ClipboardLoan &clipboard();

    // Waits until the user holds no modifier key. Throws PlatformError with the consequence if that takes too
    // long, or if the layout has changed.
    QCoro::Task<void> waitForUser(UserLayout layout, QString consequence);
    QCoro::Task<void> waitForModifiers(QString consequence);

    // Presses and releases the keys. Returns once the desktop has taken the last one if it has modifiers.
    // Throws PlatformError; `finish` then releases all keys.
    QCoro::Task<void> press(QList<PlannedKey> keys, KeyboardLayout layout);

private:
    QCoro::Task<void> set(QList<PlannedKey> keys, KeyboardLayout layout);
    QCoro::Task<void> confirmModifiers(bool areHeld);
    void close();
    void closeLater();
    bool holdsClipboard() const;

    ShellExtension &m_extension;
    PortalBus &m_portals;
    Clock &m_clock;
    UserKeymap m_keymap;
    std::unique_ptr<RemoteKeys> m_keys;
    std::unique_ptr<ClipboardLoan> m_loan; // null without the user's permission
    bool m_hasFailed = false;              // keys may be pressed, or a permission is missing
    bool m_isInUse = false;
    QTimer m_closing;
};
