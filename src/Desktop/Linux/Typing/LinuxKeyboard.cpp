// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/LinuxKeyboard.h"

#include "Desktop/Linux/Typing/X11Keyboard.h"
#include "Desktop/Linux/Typing/X11Typist.h"

#include <QCoreApplication>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// Far more than it takes: a character costs about 2 ms, and at worst 10 ms with its share of a batch.
std::chrono::milliseconds limitFor(const QList<KeyStroke> &strokes, std::chrono::microseconds pause)
{
    qsizetype characters = 0;
    for (const KeyStroke &stroke : strokes)
        characters += std::max<qsizetype>(stroke.text.size(), 1);
    const auto pauses = std::chrono::duration_cast<std::chrono::milliseconds>(pause * strokes.size());
    return 5s + characters * 50ms + 2 * pauses;
}

PlatformError nobodyInFront()
{
    return PlatformError(u"No application is in front to receive the keys."_s);
}

} // namespace

LinuxKeyboard::LinuxKeyboard(X11Display &display) : m_display(display) {}

QCoro::Task<X11Window> LinuxKeyboard::target(RunningApplication receiver)
{
    const X11Snapshot snapshot = co_await m_display.snapshot();
    const X11Window *window = snapshot.frontmost(QCoreApplication::applicationPid());
    if (!window)
        throw nobodyInFront();
    if (window->process != receiver.processIdentifier)
        throw PlatformError(u"“%1” is no longer in front, so no keys were sent."_s.arg(receiver.shownName()));
    const X11Window target = *window;
    co_await m_display.bringForward(target);
    co_return target;
}

bool LinuxKeyboard::type(const QList<KeyStroke> &strokes, std::chrono::microseconds pause,
                         const X11Window &receiver, bool isAwaited)
{
    X11Connection &connection = m_display.connection();
    m_ownNotices.begin(connection.serverTime());
    const auto end = qScopeGuard([&] { m_ownNotices.end(connection.serverTime()); });
    X11Typist typist(connection, m_display.windows(), m_display.isClosing(), limitFor(strokes, pause));
    typist.type(strokes, pause, receiver);
    return isAwaited && typist.waitUntilHandled();
}

QCoro::Task<void> LinuxKeyboard::post(QList<KeyStroke> strokes, std::chrono::microseconds pause,
                                      std::optional<RunningApplication> receiver)
{
    if (strokes.isEmpty())
        co_return;
    if (!receiver)
        throw nobodyInFront();
    const X11Window window = co_await target(*receiver);
    const auto job = [this, strokes, pause, window] { type(strokes, pause, window, false); };
    co_await m_display.run(job, limitFor(strokes, pause) + 2s);
}

QCoro::Task<bool> LinuxKeyboard::strike(std::uint16_t virtualKey, qint64 receiver)
{
    RunningApplication application;
    application.processIdentifier = receiver;
    const X11Window window = co_await target(application);
    KeyStroke stroke;
    stroke.virtualKey = virtualKey;
    const QList<KeyStroke> strokes{stroke};
    const auto job = [this, strokes, window] { return type(strokes, 0us, window, true); };
    co_return co_await m_display.run(job, limitFor(strokes, 0us) + 2s);
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
