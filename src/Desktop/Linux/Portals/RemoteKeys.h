// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Portals/PortalBus.h"
#include "Desktop/Linux/Portals/PortalClipboard.h"

#include <cstdint>
#include <memory>

// Keys and the clipboard through the portal RemoteDesktop. While an object exists, the desktop shows the user
// that the computer is operated; so keep it no longer than an action takes. `bus` must outlive it. Thread:
// main.
class RemoteKeys
{
public:
    // The first time, the desktop asks the user, who may take two minutes. Throws PlatformError.
    static QCoro::Task<std::unique_ptr<RemoteKeys>> open(PortalBus &bus);

    // Releases all keys.
    ~RemoteKeys();
    RemoteKeys(const RemoteKeys &) = delete;
    RemoteKeys &operator=(const RemoteKeys &) = delete;

    enum class KeyState : uint { Released = 0, Pressed = 1 };

    // Presses or releases the keys with these XKB keycodes, in this order. Returns once the portal has taken
    // them, but perhaps not yet the desktop. Throws PlatformError; keys may then be pressed until this object
    // is destroyed.
    QCoro::Task<void> set(QList<std::uint8_t> codes, KeyState state);

    // Null unless the user has allowed to use it.
    PortalClipboard *clipboard() { return m_clipboard.get(); }

private:
    RemoteKeys(PortalBus &bus, const QString &session);

    PortalBus &m_bus;
    const QString m_session;
    std::unique_ptr<PortalClipboard> m_clipboard;
};
