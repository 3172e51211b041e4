// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/HotKeys/LinuxHotKeys.h"

#include "Desktop/Linux/HotKeys/X11HotKeys.h"
#include "Desktop/Linux/Typing/VirtualKeys.h"
#include "Desktop/MainThreadCalls.h"

namespace {

class GrabbedKey : public HotKeyReference
{
public:
    GrabbedKey(X11Display &display, std::shared_ptr<X11HotKeys> grabs, int number)
        : m_display(display), m_grabs(std::move(grabs)), m_number(number)
    {
    }
    ~GrabbedKey() override
    {
        m_display.post([grabs = m_grabs, number = m_number] { grabs->remove(number); });
    }

    // Wraps `pressed` for the X thread; it isn't called once this reference is destroyed.
    std::function<void()> onMainThread(std::function<void()> pressed) const
    {
        return m_calls.wrap(std::move(pressed));
    }

private:
    X11Display &m_display;
    std::shared_ptr<X11HotKeys> m_grabs;
    int m_number;
    MainThreadCalls m_calls;
};

} // namespace

LinuxHotKeys::LinuxHotKeys(X11Display &display)
    : m_display(display), m_grabs(std::make_shared<X11HotKeys>(display.connection()))
{
    m_display.post([connection = &m_display.connection(), grabs = m_grabs] {
        connection->addEventHandler([grabs](const xcb_generic_event_t &event) { grabs->handle(event); });
    });
}

LinuxHotKeys::~LinuxHotKeys() = default;

QCoro::Task<std::shared_ptr<HotKeyReference>> LinuxHotKeys::registerHotKey(std::uint16_t virtualKey,
                                                                           HotKeyModifiers modifiers,
                                                                           HotKeyIdentifier /* X has none */,
                                                                           std::function<void()> pressed)
{
    const std::optional<std::uint32_t> symbol = symbolOfVirtualKey(virtualKey);
    if (!symbol)
        co_return std::shared_ptr<HotKeyReference>();
    const int number = ++m_lastNumber;
    const auto reference = std::make_shared<GrabbedKey>(m_display, m_grabs, number);
    X11HotKeys::HotKey hotKey{*symbol, modifiers, reference->onMainThread(std::move(pressed))};
    auto job = [grabs = m_grabs, number, hotKey = std::move(hotKey)] { return grabs->add(number, hotKey); };
    bool isOurs = false;
    try {
        isOurs = co_await m_display.run(std::move(job));
    } catch (const PlatformError &) {
        // Without a responding X server there are no hot keys; that isn't reported.
        isOurs = false;
    }
    if (!isOurs)
        co_return std::shared_ptr<HotKeyReference>();
    co_return std::shared_ptr<HotKeyReference>(reference);
}
