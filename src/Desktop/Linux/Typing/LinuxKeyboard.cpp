// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/LinuxKeyboard.h"

#include "Desktop/Linux/Typing/X11Keyboard.h"
#include "Desktop/Linux/Typing/X11Typist.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// Generous: a character takes about 2 ms, at most 10 ms including its share of a batch.
std::chrono::milliseconds limitFor(const QList<KeyStroke> &strokes, std::chrono::microseconds pause)
{
    qsizetype characters = 0;
    for (const KeyStroke &stroke : strokes)
        characters += std::max<qsizetype>(stroke.text.size(), 1);
    const auto pauses = std::chrono::duration_cast<std::chrono::milliseconds>(pause * strokes.size());
    return 5s + characters * 50ms + 2 * pauses;
}

} // namespace

LinuxKeyboard::LinuxKeyboard(X11Display &display, FrontmostWindow frontmostWindow)
    : m_display(display), m_frontmostWindow(std::move(frontmostWindow))
{
}

template <typename Finish>
auto LinuxKeyboard::type(QList<KeyStroke> strokes, std::chrono::microseconds pause, DesktopWindow receiver,
                         Finish finish)
{
    const std::chrono::milliseconds limit = limitFor(strokes, pause);
    const auto job = [=, this] {
        X11Connection &connection = m_display.connection();
        m_ownNotices.begin(connection.serverTime());
        const auto end = qScopeGuard([&] { m_ownNotices.end(connection.serverTime()); });
        X11Typist typist(connection, m_display.windows(), m_display.isClosing(), limit);
        typist.type(strokes, pause, receiver);
        return finish(typist);
    };
    return m_display.run(job, limit + 2s);
}

QCoro::Task<void> LinuxKeyboard::post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                                      std::optional<RunningApplication> receiver)
{
    if (strokes.isEmpty())
        co_return;
    const DesktopWindow window = co_await target(m_display, m_frontmostWindow, receiver);
    const auto finish = [](const X11Typist &) {};
    co_await type(strokes, pause, window, finish);
}

QCoro::Task<bool> LinuxKeyboard::strike(std::uint16_t virtualKey, RunningApplication receiver)
{
    const DesktopWindow window = co_await target(m_display, m_frontmostWindow, receiver);
    KeyStroke stroke;
    stroke.virtualKey = virtualKey;
    const QList<KeyStroke> strokes{stroke};
    const auto finish = [](const X11Typist &typist) { return typist.waitUntilHandled(); };
    co_return co_await type(strokes, 0us, window, finish);
}

QCoro::Task<bool> LinuxKeyboard::canSendKeys()
{
    const auto tryOut = [this] { X11Keyboard keyboard(m_display.connection()); };
    try {
        co_await m_display.run(tryOut);
        co_return true;
    } catch (const PlatformError &) {
        co_return false;
    }
}
