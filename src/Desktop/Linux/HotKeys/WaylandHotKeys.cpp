// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/HotKeys/WaylandHotKeys.h"

QCoro::Task<std::shared_ptr<HotKeyReference>> WaylandHotKeys::registerHotKey(std::uint16_t virtualKey,
                                                                             HotKeyModifiers modifiers,
                                                                             HotKeyIdentifier identifier,
                                                                             std::function<void()> pressed)
{
    const std::weak_ptr<const bool> life = m_life;
    const KGlobalAccelHotKeys::Standing standing =
        co_await m_accelerator.standing(virtualKey, modifiers, identifier);
    std::shared_ptr<HotKeyReference> key;
    if (life.expired())
        co_return key;
    if (standing.isOffered)
        key = co_await m_accelerator.registerHotKey(virtualKey, modifiers, identifier, pressed);
    else
        key = co_await m_portal.registerHotKey(virtualKey, modifiers, identifier, pressed);
    co_return key;
}
