// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/ShellExtension/ShellKeys.h"

#include "Desktop/Deadlines.h"
#include "Desktop/KeyRules.h"
#include "Desktop/Linux/Portals/RemoteKeys.h"
#include "Desktop/Linux/Portals/RestoreToken.h"
#include "Desktop/PlatformError.h"

#include <QElapsedTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// What the desktop keeps of a clipboard whose owner has gone, and other names of it.
const QByteArrayList keptFormats{"text/plain;charset=utf-8", "text/plain"};
const QByteArrayList equalFormats{"UTF8_STRING", "STRING", "TEXT"};
constexpr qsizetype largestKept = 4 * 1024 * 1024;

bool outlivesItsOwner(const ClipboardContent &content)
{
    const auto isKept = [](const QByteArray &format) { return keptFormats.contains(format); };
    const auto isText = [](const QByteArray &format) {
        return keptFormats.contains(format) || equalFormats.contains(format);
    };
    return std::any_of(content.formats.cbegin(), content.formats.cend(), isKept) &&
           std::all_of(content.formats.cbegin(), content.formats.cend(), isText) &&
           content.data.constFirst().size() <= largestKept;
}

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
    QObject::connect(&m_closing, &QTimer::timeout, &m_closing, [this] {
        if (!holdsClipboard())
            close();
    });
}

ShellKeys::~ShellKeys() = default;

QCoro::Task<void> ShellKeys::open()
{
    m_closing.stop();
    m_isInUse = true;
    if (m_keys)
        co_return;
    m_keys = co_await RemoteKeys::open(m_portals);
    if (PortalClipboard *clipboard = m_keys->clipboard()) {
        m_loan = std::make_unique<ClipboardLoan>(*clipboard, m_clock);
        QObject::connect(clipboard, &PortalClipboard::ownerChanged, &m_closing, [this] { closeLater(); });
    }
}

QCoro::Task<void> ShellKeys::finish()
{
    if (m_loan) {
        m_loan->giveBack();
        co_await m_loan->settle();
    }
    m_isInUse = false;
    if (m_hasFailed)
        close();
    else
        closeLater();
}

void ShellKeys::close()
{
    m_loan.reset();
    m_keys.reset();
    m_hasFailed = false;
}

void ShellKeys::closeLater()
{
    if (!m_isInUse)
        m_closing.start();
}

// The user's content would lose its other formats with the session.
bool ShellKeys::holdsClipboard() const
{
    const auto offer = m_loan ? m_loan->returned() : nullptr;
    return offer && !outlivesItsOwner(offer->content());
}

QCoro::Task<ShellKeys::Meaning> ShellKeys::meaning()
{
    const ShellExtension::Keys keys = co_await m_extension.keys();
    Meaning meaning;
    meaning.layout = co_await m_keymap.layout(keys.group);
    if (keys.isCapsLockOn || keys.areComposed)
        meaning.ownCharacters = OwnCharacters::Pasted;
    co_return meaning;
}

ClipboardLoan &ShellKeys::clipboard()
{
    if (m_loan)
        return *m_loan;
    m_hasFailed = true; // closes the session
    RestoreToken::write({});
    throw PlatformError(
        u"You didn't allow Orvane to use the clipboard, which this text needs; it asks again next time."_s);
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
        m_hasFailed = true;
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
