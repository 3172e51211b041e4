// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/HotKeys/KGlobalAccelHotKeys.h"
#include "Desktop/Linux/HotKeys/PortalHotKeys.h"

// Hot keys of Wayland desktops: by KGlobalAccel if it runs, which asks the user nothing, or else by the
// portal. Thread: main.
class WaylandHotKeys : public HotKeys
{
public:
    QCoro::Task<std::shared_ptr<HotKeyReference>> registerHotKey(std::uint16_t virtualKey,
                                                                 HotKeyModifiers modifiers,
                                                                 HotKeyIdentifier identifier,
                                                                 std::function<void()> pressed) override;

private:
    // Expires with this object, which must not be used any more when the services answer later.
    const std::shared_ptr<const bool> m_life = std::make_shared<const bool>(true);
    KGlobalAccelHotKeys m_accelerator;
    PortalHotKeys m_portal;
};
