// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/ShellExtension/ShellKeys.h"

#include "Desktop/Deadlines.h"
#include "Desktop/KeyRules.h"
#include "Desktop/Linux/Portals/RemoteKeys.h"
#include "Desktop/PlatformError.h"

#include <QElapsedTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// The shell may drop keys that it hasn't delivered yet when their keyboard goes. While it is there, the top
// bar shows it.
constexpr auto idleLimit = 2s;

} // namespace

ShellKeys::ShellKeys(ShellExtension &extension, PortalBus &portals, WaylandConnection &connection,
                     Clock &clock)
    : m_extension(extension), m_portals(portals), m_clock(clock), m_keymap(connection)
{
    m_closing.setSingleShot(true);
    m_closing.setInterval(idleLimit);
    QObject::connect(&m_closing, &QTimer::timeout, &m_closing, [this] { m_keys.reset(); });
}

ShellKeys::~ShellKeys() = default;

QCoro::Task<void> ShellKeys::open()
{
    m_closing.stop();
    if (!m_keys)
        m_keys = co_await RemoteKeys::open(m_portals);
}

void ShellKeys::closeLater()
{
    m_closing.start();
}

QCoro::Task<UserLayout> ShellKeys::layout()
{
    const ShellExtension::Keys keys = co_await m_extension.keys();
    co_return co_await m_keymap.layout(keys.group);
}

QCoro::Task<void> ShellKeys::waitForUser(UserLayout layout, QString consequence)
{
    co_await waitForModifiers(consequence);
    const ShellExtension::Keys keys = co_await m_extension.keys();
    m_keymap.requireSame(layout, keys.group);
}

QCoro::Task<void> ShellKeys::waitForModifiers(QString consequence)
{
    const KeyRules::ModifierPatience patience;
    ShellExtension::Keys keys = co_await m_extension.keys();
    while (keys.isModifierHeld) {
        patience.requireTimeLeft(consequence);
        co_await m_clock.sleep(KeyRules::ModifierPatience::interval);
        keys = co_await m_extension.keys();
    }
}

QCoro::Task<void> ShellKeys::press(QList<PlannedKey> keys, KeyboardLayout layout)
{
    try {
        co_await set(keys, layout);
    } catch (const PlatformError &) {
        m_keys.reset(); // releases them
        throw;
    }
}

QCoro::Task<void> ShellKeys::set(QList<PlannedKey> keys, KeyboardLayout layout)
{
    using State = RemoteKeys::KeyState;
    for (qsizetype index = 0; index < keys.size(); ++index) {
        QList<std::uint8_t> modifiers = codesOf(keys[index], layout);
        const QList<std::uint8_t> code{modifiers.takeLast()};
        const bool isConfirmed = !modifiers.isEmpty() && index == keys.size() - 1;
        co_await m_keys->set(modifiers, State::Pressed);
        if (isConfirmed)
            co_await confirmModifiers(true);
        co_await m_keys->set(code, State::Pressed);
        co_await m_keys->set(code, State::Released);
        std::reverse(modifiers.begin(), modifiers.end());
        co_await m_keys->set(modifiers, State::Released);
        if (isConfirmed)
            co_await confirmModifiers(false);
    }
}

// The shell takes keys in their order, so it has also taken those before.
QCoro::Task<void> ShellKeys::confirmModifiers(bool areHeld)
{
    QElapsedTimer waiting;
    waiting.start();
    ShellExtension::Keys keys = co_await m_extension.keys();
    while (keys.isModifierHeld != areHeld) {
        if (waiting.hasExpired(Deadlines::answer.count()))
            throw PlatformError(u"The desktop hasn't taken all keys."_s);
        co_await m_clock.sleep(5ms);
        keys = co_await m_extension.keys();
    }
}
