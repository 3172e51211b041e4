// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/Keyboard.h"

#include "Desktop/Linux/Wayland/FocusGuard.h"
#include "Desktop/Linux/Wayland/KeyChunks.h"
#include "Desktop/Linux/Wayland/KeyPace.h"
#include "Desktop/Linux/Wayland/Keymap.h"
#include "Desktop/Linux/Wayland/Object.h"
#include "Desktop/PlatformError.h"

#include <QFile>

#include <algorithm>

#include <sys/mman.h>
#include <virtual-keyboard-unstable-v1-client-protocol.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// Applications lose keys of a keyboard that they don't know yet.
constexpr auto introduction = 5ms;

constexpr std::uint8_t kernelOffset = 8; // XKB's keycodes are the kernel's plus this

// In every keymap, the bits of the real modifiers.
std::uint32_t maskOf(ModifierKeys modifiers)
{
    std::uint32_t mask = 0;
    if (modifiers & ModifierKey::Shift)
        mask |= 1U << 0;
    if (modifiers & ModifierKey::Control)
        mask |= 1U << 2;
    if (modifiers & ModifierKey::Alternate)
        mask |= 1U << 3;
    return mask;
}

// A batch's keys, divided after each one that ends a stroke.
QList<std::span<const PlannedKey>> chunksOf(const TypingBatch &batch)
{
    QList<std::span<const PlannedKey>> chunks;
    const std::span<const PlannedKey> keys(batch.keys.constData(), std::size_t(batch.keys.size()));
    std::size_t begin = 0;
    for (std::size_t index = 0; index < keys.size(); ++index) {
        if (!keys[index].endsStroke)
            continue;
        chunks.append(keys.subspan(begin, index + 1 - begin));
        begin = index + 1;
    }
    return chunks;
}

// The first character beyond U+FFFF; empty if there is none.
QString firstBeyondBasicPlane(const QList<KeyStroke> &strokes)
{
    for (const KeyStroke &stroke : strokes) {
        for (qsizetype i = 0; i + 1 < stroke.text.size(); ++i) {
            if (stroke.text.at(i).isHighSurrogate())
                return stroke.text.mid(i, 2);
        }
    }
    return {};
}

std::uint32_t now()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

} // namespace

bool WaylandKeyboard::isOfferedBy(const WaylandConnection &connection)
{
    return connection.seat() && connection.offers(zwp_virtual_keyboard_manager_v1_interface);
}

WaylandKeyboard::WaylandKeyboard(WaylandConnection &connection, WindowSystem &windowSystem,
                                 FrontmostWindow frontmostWindow, TakesEveryCharacter takesEveryCharacter,
                                 Clock &clock)
    : m_connection(connection), m_windowSystem(windowSystem), m_frontmostWindow(std::move(frontmostWindow)),
      m_takesEveryCharacter(std::move(takesEveryCharacter)), m_clock(clock)
{
    const WaylandObject<zwp_virtual_keyboard_manager_v1, zwp_virtual_keyboard_manager_v1_destroy> manager(
        connection.bind<zwp_virtual_keyboard_manager_v1>(zwp_virtual_keyboard_manager_v1_interface, 1));
    m_keyboard = zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(manager.get(), m_connection.seat());
    setKeymap({});
    m_connection.flush();
    m_age.start();
}

WaylandKeyboard::~WaylandKeyboard()
{
    zwp_virtual_keyboard_v1_destroy(m_keyboard);
    m_connection.flush();
}

QCoro::Task<void> WaylandKeyboard::post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                                        std::optional<RunningApplication> receiver)
{
    if (strokes.isEmpty())
        co_return;
    const QList<TypingBatch> batches = planKeyChunks(strokes);
    co_await waitUntilKnown();
    if (receiver)
        co_await requireCharactersTaken(strokes, *receiver);
    const DesktopWindow window = co_await target(m_windowSystem, m_frontmostWindow, receiver);
    // The compositor may have replaced the keymap, as sway does when it reloads its settings.
    m_lentSymbols.reset();
    KeyPace pace;
    FocusGuard guard(m_windowSystem, window);
    for (const TypingBatch &batch : batches) {
        const QList<std::span<const PlannedKey>> chunks = chunksOf(batch);
        for (const std::span<const PlannedKey> chunk : chunks) {
            co_await m_clock.sleep(pace.pauseBefore(chunk.size()));
            co_await guard.requireFocus();
            send(chunk, batch.lentSymbols);
            co_await m_clock.sleep(std::chrono::ceil<std::chrono::milliseconds>(pause));
        }
    }
    co_await m_connection.roundTrip();
}

QCoro::Task<bool> WaylandKeyboard::canSendKeys()
{
    return m_connection.answers();
}

QCoro::Task<void> WaylandKeyboard::requireCharactersTaken(QList<KeyStroke> strokes,
                                                          RunningApplication receiver)
{
    const QString character = firstBeyondBasicPlane(strokes);
    if (character.isEmpty())
        co_return;
    const bool isTaken = co_await m_takesEveryCharacter(receiver);
    if (!isTaken)
        throw PlatformError(u"“%1” may not take the character “%2”, so nothing was typed."_s.arg(
            receiver.shownName(), character));
}

QCoro::Task<void> WaylandKeyboard::waitUntilKnown()
{
    if (!m_age.hasExpired(introduction.count()))
        co_await m_clock.sleep(introduction);
}

// All at once: whatever happens later, no key remains pressed.
void WaylandKeyboard::send(std::span<const PlannedKey> keys,
                           const QHash<std::uint8_t, std::uint32_t> &lentSymbols)
{
    if (lentSymbols != m_lentSymbols)
        setKeymap(lentSymbols);
    for (const PlannedKey &key : keys)
        type(key);
    m_connection.flush();
}

void WaylandKeyboard::setKeymap(const QHash<std::uint8_t, std::uint32_t> &lentSymbols)
{
    QByteArray text = WaylandKeymap::text(lentSymbols);
    text.append('\0');
    QFile file;
    const QIODevice::OpenMode mode = QIODevice::WriteOnly | QIODevice::Unbuffered;
    if (!file.open(memfd_create("orvane-keymap", MFD_CLOEXEC), mode, QFile::AutoCloseHandle) ||
        file.write(text) != text.size())
        throw PlatformError(u"There is no memory for the keyboard's layout."_s);
    zwp_virtual_keyboard_v1_keymap(m_keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file.handle(),
                                   static_cast<std::uint32_t>(text.size()));
    m_lentSymbols = lentSymbols;
}

void WaylandKeyboard::type(const PlannedKey &key)
{
    QList<std::uint8_t> modifiers;
    for (const ModifierKey each : {ModifierKey::Control, ModifierKey::Alternate, ModifierKey::Shift}) {
        if (key.modifiers.testFlag(each))
            modifiers.append(WaylandKeymap::layout().modifierCodes.value(each));
    }
    for (const std::uint8_t code : modifiers)
        sendKey(code, WL_KEYBOARD_KEY_STATE_PRESSED);
    // Compositors don't derive the modifiers from the keys.
    if (!modifiers.isEmpty())
        setModifiers(key.modifiers);
    sendKey(key.code, WL_KEYBOARD_KEY_STATE_PRESSED);
    sendKey(key.code, WL_KEYBOARD_KEY_STATE_RELEASED);
    for (const std::uint8_t code : modifiers)
        sendKey(code, WL_KEYBOARD_KEY_STATE_RELEASED);
    if (!modifiers.isEmpty())
        setModifiers({});
}

void WaylandKeyboard::sendKey(std::uint8_t code, std::uint32_t state)
{
    zwp_virtual_keyboard_v1_key(m_keyboard, now(), code - kernelOffset, state);
}

void WaylandKeyboard::setModifiers(ModifierKeys modifiers)
{
    zwp_virtual_keyboard_v1_modifiers(m_keyboard, maskOf(modifiers), 0, 0, 0);
}
