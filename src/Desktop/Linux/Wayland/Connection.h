// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QPromise>
#include <QSocketNotifier>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

#include <wayland-client.h>

// A connection to the Wayland compositor, separate from Qt's. Events are delivered from the event loop;
// nothing blocks after construction. Thread: main.
class WaylandConnection
{
public:
    // Connects to the compositor of the environment and learns what it offers, within two seconds. Throws
    // PlatformError.
    WaylandConnection();
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection &) = delete;
    WaylandConnection &operator=(const WaylandConnection &) = delete;

    // Whether the compositor offers the global interface, in this version at least.
    bool offers(const wl_interface &interface, std::uint32_t version = 1) const;

    // Binds the first global of this interface in the highest version that both sides know, at most
    // `version`; null if there is none.
    template <typename Object>
    Object *bind(const wl_interface &interface, std::uint32_t version) const;

    // The user's input devices; null if there are none.
    wl_seat *seat() const { return m_seat.get(); }

    // 0 if unknown.
    qint64 compositorProcess() const;

    // Those of the processes that are connected to this compositor.
    QList<qint64> clientsAmong(const QList<qint64> &processes) const;

    // Returns once the compositor has handled all requests and their events have been delivered. Throws
    // PlatformError if it doesn't answer within Deadlines::answer or is gone.
    QCoro::Task<void> roundTrip();

    // Whether the compositor answers in time.
    QCoro::Task<bool> answers();

    // Sends what was requested, as far as the compositor takes it; the rest follows from the event loop.
    void flush();

    // Once the compositor has closed the connection, a sentence that says so; otherwise nothing.
    std::optional<QString> loss() const;

    // Throws PlatformError if the compositor has closed the connection.
    void requireConnection() const;

private:
    // A request whose answer is awaited. Shared by the callback and the one who waits, in whichever order
    // they end.
    using Answer = std::shared_ptr<QPromise<void>>;

    struct Global
    {
        std::uint32_t name = 0;
        QByteArray interface;
        std::uint32_t version = 0;
    };

    static void addGlobal(void *data, wl_registry *registry, std::uint32_t name, const char *interface,
                          std::uint32_t version);
    static void removeGlobal(void *data, wl_registry *registry, std::uint32_t name);
    static void answer(void *data, wl_callback *callback, std::uint32_t serial);

    const Global *find(const wl_interface &interface) const;
    void *bindGlobal(const wl_interface &interface, std::uint32_t version) const;
    void learnGlobals();
    void read();
    void dispatch();

    struct Release
    {
        void operator()(wl_display *display) const { wl_display_disconnect(display); }
        void operator()(wl_registry *registry) const { wl_registry_destroy(registry); }
        void operator()(wl_seat *seat) const { wl_seat_destroy(seat); }
    };

    std::unique_ptr<wl_display, Release> m_display;
    std::unique_ptr<wl_registry, Release> m_registry;
    std::unique_ptr<wl_seat, Release> m_seat;
    QList<Global> m_globals;
    std::unique_ptr<QSocketNotifier> m_reading;
    std::unique_ptr<QSocketNotifier> m_writing; // enabled while the compositor takes no more
    QList<Answer> m_awaited;
    bool m_isLost = false;
};

template <typename Object>
Object *WaylandConnection::bind(const wl_interface &interface, std::uint32_t version) const
{
    return static_cast<Object *>(bindGlobal(interface, version));
}
