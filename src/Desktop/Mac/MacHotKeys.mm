// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/MacHotKeys.h"

#include <Carbon/Carbon.h>

namespace {

class CarbonHotKey : public HotKeyReference
{
public:
    explicit CarbonHotKey(std::function<void()> pressed) : m_pressed(std::move(pressed)) {}
    ~CarbonHotKey() override
    {
        if (m_hotKey)
            UnregisterEventHotKey(m_hotKey);
        if (m_handler)
            RemoveEventHandler(m_handler);
    }
    CarbonHotKey(const CarbonHotKey &) = delete;
    CarbonHotKey &operator=(const CarbonHotKey &) = delete;

    // Call once. Returns false if another program holds the key.
    bool acquire(std::uint16_t virtualKey, HotKeyModifiers modifiers, HotKeyIdentifier identifier)
    {
        m_identifier = {identifier.signature, identifier.number};
        const EventTypeSpec pressedEvent = {kEventClassKeyboard, kEventHotKeyPressed};
        if (InstallEventHandler(GetApplicationEventTarget(), &CarbonHotKey::handle, 1, &pressedEvent, this,
                                &m_handler) != noErr)
            return false;
        // Without exclusivity, two programs could react to the key, and the conflict would go unnoticed.
        return RegisterEventHotKey(virtualKey, modifiers.toInt(), m_identifier, GetApplicationEventTarget(),
                                   kEventHotKeyExclusive, &m_hotKey) == noErr;
    }

private:
    static OSStatus handle(EventHandlerCallRef, EventRef event, void *hotKey)
    {
        const auto *self = static_cast<const CarbonHotKey *>(hotKey);
        EventHotKeyID identifier = {};
        const OSStatus status = GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr,
                                                  sizeof identifier, nullptr, &identifier);
        if (status != noErr || identifier.signature != self->m_identifier.signature ||
            identifier.id != self->m_identifier.id)
            return eventNotHandledErr;
        // Copied, since the function may destroy this object.
        const std::function<void()> pressed = self->m_pressed;
        pressed();
        return noErr;
    }

    std::function<void()> m_pressed;
    EventHotKeyID m_identifier = {};
    EventHandlerRef m_handler = nullptr;
    EventHotKeyRef m_hotKey = nullptr;
};

} // namespace

QCoro::Task<std::shared_ptr<HotKeyReference>> MacHotKeys::registerHotKey(std::uint16_t virtualKey,
                                                                         HotKeyModifiers modifiers,
                                                                         HotKeyIdentifier identifier,
                                                                         std::function<void()> pressed)
{
    const auto reference = std::make_shared<CarbonHotKey>(std::move(pressed));
    const bool isOurs = reference->acquire(virtualKey, modifiers, identifier);
    co_return isOurs ? std::shared_ptr<HotKeyReference>(reference) : nullptr;
}
