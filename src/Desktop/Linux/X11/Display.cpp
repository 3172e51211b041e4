// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11/Display.h"

#include "Desktop/Deadlines.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSemaphore>
#include <QSysInfo>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

void requireAlive(const std::weak_ptr<const bool> &life)
{
    if (life.expired())
        throw PlatformError(u"The connection to the X server has been closed."_s);
}

} // namespace

X11Display::X11Display(Clock &clock, const std::optional<QString> &obstacle)
    : m_clock(clock), m_obstacle(obstacle)
{
    if (m_obstacle)
        return;
    m_server = std::make_unique<Server>();
    m_queue.post(&X11Connection::prepareThread);
    QSocketNotifier &notifier = m_server->notifier;
    QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [this] { handleEvents(); });
}

X11Display::~X11Display()
{
    if (!m_server)
        return;
    m_isClosing = true;
    m_server->notifier.setEnabled(false);
    const auto idle = std::make_shared<QSemaphore>();
    m_queue.post([idle] { idle->release(); });
    if (!idle->tryAcquire(1, 1000))
        connection().interrupt();
}

void X11Display::requireServer() const
{
    if (m_obstacle)
        throw PlatformError(*m_obstacle);
}

// The history of active windows has to be recorded from every change event.
void X11Display::handleEvents()
{
    m_server->notifier.setEnabled(false);
    m_queue.post([this] {
        windows().drainEvents();
        if (!xcb_connection_has_error(connection().get()) && !m_isClosing)
            QMetaObject::invokeMethod(&m_server->notifier, [this] { m_server->notifier.setEnabled(true); });
    });
}

void X11Display::post(std::function<void()> job)
{
    requireServer();
    m_queue.post([this, job = std::move(job)] {
        job();
        windows().drainEvents();
    });
}

QCoro::Task<WindowSnapshot> X11Display::snapshot()
{
    return run([this] { return windows().snapshot(); });
}

QCoro::Task<void> X11Display::bringForward(DesktopWindow window)
{
    enum class Standing { Waiting, Active, HasKeys };
    const auto standing = [this, window] {
        if (windows().hasKeys(window))
            return Standing::HasKeys;
        return windows().isActive(window) ? Standing::Active : Standing::Waiting;
    };
    const auto request = [this, window] {
        if (!windows().snapshot().find(window.identifier))
            throw PlatformError(u"The window “%1” is gone."_s.arg(window.title));
        windows().requestActivation(window.identifier);
    };
    QElapsedTimer elapsed;
    elapsed.start();
    const std::weak_ptr<const bool> life = m_life;
    Standing last = co_await run(standing);
    requireAlive(life);
    for (qint64 nextRequest = 0;
         last != Standing::HasKeys && !elapsed.hasExpired(Deadlines::focus.count());) {
        if (elapsed.elapsed() >= nextRequest) {
            co_await run(request);
            requireAlive(life);
            nextRequest = elapsed.elapsed() + 500;
        }
        co_await m_clock.sleep(5ms);
        requireAlive(life);
        last = co_await run(standing);
        requireAlive(life);
    }
    // Without a window manager its properties are stale.
    if (last != Standing::HasKeys && !co_await run([this] { return windows().windowManager(); }))
        throw PlatformError(u"No window manager is running to bring “%1” to the front."_s.arg(window.title));
    // A window without keyboard input (a clock) never gets the focus.
    if (last == Standing::Waiting)
        throw PlatformError(u"The window “%1” didn't come to the front."_s.arg(window.title));
}

QCoro::Task<void> X11Display::close(QList<DesktopWindow> windows)
{
    return run([this, windows] {
        for (const DesktopWindow &window : windows)
            m_server->windows.requestClose(window.identifier);
    });
}

QCoro::Task<QString> X11Display::startupIdentifier()
{
    const auto serverTime = [this]() -> std::uint32_t { return connection().serverTime(); };
    const std::weak_ptr<const bool> life = m_life;
    const std::uint32_t time = co_await run(serverTime);
    requireAlive(life);
    co_return u"orvane-%1-%2-%3_TIME%4"_s.arg(QCoreApplication::applicationPid())
        .arg(QSysInfo::machineHostName())
        .arg(++m_launches)
        .arg(time);
}
