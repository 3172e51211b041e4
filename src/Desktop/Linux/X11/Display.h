// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Clock.h"
#include "Desktop/Linux/WindowSystem/WindowSystem.h"
#include "Desktop/Linux/X11/Connection.h"
#include "Desktop/Linux/X11/Windows.h"

#include <QCoroTask>
#include <QSocketNotifier>

#include <atomic>
#include <memory>
#include <optional>

// The main thread's interface to the X server: owns the connection and the only thread that uses it. Every
// operation is asynchronous and has a timeout. Throws PlatformError if the server doesn't respond or there is
// an obstacle. Thread: main.
class X11Display : public WindowSystem
{
public:
    // Connects; throws PlatformError. With an obstacle it never connects, and every operation throws
    // PlatformError with that text. `clock` must outlive this object.
    explicit X11Display(Clock &clock, const std::optional<QString> &obstacle = std::nullopt);
    // Waits up to a second for the job in progress.
    ~X11Display() override;
    X11Display(const X11Display &) = delete;
    X11Display &operator=(const X11Display &) = delete;

    QCoro::Task<WindowSnapshot> snapshot() override;
    QCoro::Task<void> bringForward(DesktopWindow window) override;
    QCoro::Task<void> close(QList<DesktopWindow> windows) override;
    // Contains the server's time, with which a window passes focus stealing prevention.
    QCoro::Task<QString> startupIdentifier() override;

    // Runs the job on the X thread. It may use `connection`, `windows` and `isClosing`, and should return
    // early once `isClosing` is set.
    template <typename Job>
    QCoro::Task<std::invoke_result_t<Job>> run(Job job,
                                               std::chrono::milliseconds limit = BoundedQueue::standardLimit);

    // Queues a job without waiting for it. It must not throw.
    void post(std::function<void()> job);

    X11Connection &connection() { return m_server->connection; }
    X11Windows &windows() { return m_server->windows; }
    const std::atomic_bool &isClosing() const { return m_isClosing; }

private:
    struct Server
    {
        X11Connection connection;
        X11Windows windows{connection};
        QSocketNotifier notifier{connection.fileDescriptor(), QSocketNotifier::Read};
    };

    void handleEvents();
    void requireServer() const;

    Clock &m_clock;
    const std::optional<QString> m_obstacle;
    std::unique_ptr<Server> m_server; // null with an obstacle
    std::atomic_bool m_isClosing = false;
    // Expires with this object. Coroutines may be resumed later, and then must not use it.
    const std::shared_ptr<const bool> m_life = std::make_shared<const bool>(true);
    int m_launches = 0;
    // Declared last: its thread must end before the members it uses are destroyed.
    BoundedQueue m_queue{QStringLiteral("desktop.x11"), QStringLiteral("The X server")};
};

template <typename Job>
QCoro::Task<std::invoke_result_t<Job>> X11Display::run(Job job, std::chrono::milliseconds limit)
{
    requireServer();
    // Waiting for a reply can queue events inside xcb, where the socket notifier doesn't see them.
    struct Drain
    {
        X11Windows &windows;
        ~Drain() { windows.drainEvents(); }
    };
    auto drained = [this, job = std::move(job)]() mutable {
        const Drain drain{windows()};
        return job();
    };
    return m_queue.run(std::move(drained), limit);
}
