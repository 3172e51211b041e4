// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Clock.h"
#include "Desktop/Linux/X11/Connection.h"
#include "Desktop/Linux/X11/Windows.h"

#include <QCoroTask>
#include <QSocketNotifier>

#include <atomic>
#include <memory>
#include <optional>

// The X server as the main thread sees it: owns the connection and the thread on which alone it is used.
// Every operation is asynchronous and bounded, and throws PlatformError when the server does not answer, or
// when it is none of ours to use.
class X11Display
{
public:
    // Connects; throws PlatformError. With an obstacle, does not even connect, and every operation throws
    // PlatformError with that sentence. `clock` outlives this object.
    explicit X11Display(Clock &clock, const std::optional<QString> &obstacle = std::nullopt);
    // Lets the job in progress end, if it does so soon.
    ~X11Display();
    X11Display(const X11Display &) = delete;
    X11Display &operator=(const X11Display &) = delete;

    QCoro::Task<X11Snapshot> snapshot();

    // Brings the window to the front and waits until keys go to its application. Throws when the window is
    // gone, or does not come to the front within Deadlines::focus.
    QCoro::Task<void> bringForward(X11Window window);

    // Asks the windows politely to close.
    QCoro::Task<void> close(QList<X11Window> windows);

    // The server's time, as launched applications need it to be let to the front.
    QCoro::Task<std::uint32_t> serverTime();

    // Runs the job on the X thread. It may use `connection`, `windows` and `isClosing`, and should end early
    // once the latter is set.
    template <typename Job>
    QCoro::Task<std::invoke_result_t<Job>> run(Job job,
                                               std::chrono::milliseconds limit = BoundedQueue::standardLimit);

    // The same for a job whose end nobody waits for. It must not throw.
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
    std::unique_ptr<Server> m_server; // none with an obstacle
    std::atomic_bool m_isClosing = false;
    // The last member: its thread is gone before what it uses.
    BoundedQueue m_queue{QStringLiteral("desktop.x11"), QStringLiteral("The X server")};
};

template <typename Job>
QCoro::Task<std::invoke_result_t<Job>> X11Display::run(Job job, std::chrono::milliseconds limit)
{
    requireServer();
    // Waiting for an answer can take events off the wire without anybody being told of them.
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
