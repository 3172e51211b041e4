// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Portals/PortalBus.h"
#include "Desktop/Shell/HotKeys.h"

// Hot keys through the portal GlobalShortcuts. The first time, the desktop asks the user, who can choose
// another key there or later in its settings. A refusal is kept (HotKeyRefusal). Without the portal there are
// none. Thread: main.
class PortalHotKeys : public HotKeys
{
public:
    // Proposes Ctrl+Alt with the key instead of Alt alone, whose Space belongs to the window menu on the
    // desktops with this portal.
    QCoro::Task<std::shared_ptr<HotKeyReference>> registerHotKey(std::uint16_t virtualKey,
                                                                 HotKeyModifiers modifiers,
                                                                 HotKeyIdentifier identifier,
                                                                 std::function<void()> pressed) override;

private:
    PortalBus m_portals;
};
