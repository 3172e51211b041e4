// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/Connection.h"

#include "Desktop/BoundedQueue.h"
#include "Desktop/Deadlines.h"
#include "Desktop/Linux/Processes/RunningProcess.h"
#include "Desktop/Linux/Processes/SocketClients.h"
#include "Desktop/Linux/Wayland/BlockingDispatch.h"
#include "Desktop/PlatformError.h"

#include <QPromise>

#include <algorithm>
#include <cerrno>
#include <utility>

#include <poll.h>

using namespace Qt::StringLiterals;

namespace {

bool isReadable(int descriptor)
{
    pollfd question{descriptor, POLLIN, 0};
    return poll(&question, 1, 0) > 0;
}

} // namespace

WaylandConnection::WaylandConnection() : m_display(wl_display_connect(nullptr))
{
    if (!m_display)
        throw PlatformError(u"The Wayland compositor can't be reached."_s);
    learnGlobals();
    m_seat.reset(bind<wl_seat>(wl_seat_interface, 5));
    const int descriptor = wl_display_get_fd(m_display.get());
    m_reading = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QObject::connect(m_reading.get(), &QSocketNotifier::activated, m_reading.get(), [this] { read(); });
    m_writing = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write);
    m_writing->setEnabled(false);
    QObject::connect(m_writing.get(), &QSocketNotifier::activated, m_writing.get(), [this] { flush(); });
    flush();
}

WaylandConnection::~WaylandConnection() = default;

void WaylandConnection::learnGlobals()
{
    static constexpr wl_registry_listener registryListener{&addGlobal, &removeGlobal};
    m_registry.reset(wl_display_get_registry(m_display.get()));
    wl_registry_add_listener(m_registry.get(), &registryListener, this);
    BlockingDispatch::roundTrip(m_display.get());
}

void WaylandConnection::addGlobal(void *data, wl_registry *, std::uint32_t name, const char *interface,
                                  std::uint32_t version)
{
    static_cast<WaylandConnection *>(data)->m_globals.append({name, QByteArray(interface), version});
}

void WaylandConnection::removeGlobal(void *data, wl_registry *, std::uint32_t name)
{
    static_cast<WaylandConnection *>(data)->m_globals.removeIf(
        [name](const Global &global) { return global.name == name; });
}

const WaylandConnection::Global *WaylandConnection::find(const wl_interface &interface) const
{
    const auto found = std::find_if(m_globals.cbegin(), m_globals.cend(), [&interface](const Global &global) {
        return global.interface == interface.name;
    });
    return found == m_globals.cend() ? nullptr : &*found;
}

bool WaylandConnection::offers(const wl_interface &interface, std::uint32_t version) const
{
    const Global *global = find(interface);
    return global && global->version >= version;
}

void *WaylandConnection::bindGlobal(const wl_interface &interface, std::uint32_t version) const
{
    const Global *global = find(interface);
    if (!global)
        return nullptr;
    const std::uint32_t common = std::min({version, global->version, std::uint32_t(interface.version)});
    return wl_registry_bind(m_registry.get(), global->name, &interface, common);
}

qint64 WaylandConnection::compositorProcess() const
{
    return peerProcess(wl_display_get_fd(m_display.get()));
}

QList<qint64> WaylandConnection::clientsAmong(const QList<qint64> &processes) const
{
    return ::clientsAmong(processes, peerPath(wl_display_get_fd(m_display.get())));
}

void WaylandConnection::read()
{
    while (wl_display_prepare_read(m_display.get()) != 0) {
        dispatch();
        if (m_isLost)
            return;
    }
    if (!isReadable(wl_display_get_fd(m_display.get())))
        wl_display_cancel_read(m_display.get());
    else
        wl_display_read_events(m_display.get());
    dispatch();
    flush();
}

void WaylandConnection::dispatch()
{
    wl_display_dispatch_pending(m_display.get());
    if (wl_display_get_error(m_display.get()) == 0)
        return;
    m_isLost = true;
    m_reading->setEnabled(false);
    m_writing->setEnabled(false);
    for (const Answer &answer : std::exchange(m_awaited, {}))
        answer->finish();
}

void WaylandConnection::flush()
{
    const bool isFull = wl_display_flush(m_display.get()) < 0 && errno == EAGAIN;
    m_writing->setEnabled(isFull && !m_isLost);
}

std::optional<QString> WaylandConnection::loss() const
{
    if (!m_isLost)
        return std::nullopt;
    return u"The Wayland compositor has closed the connection; start Orvane again."_s;
}

void WaylandConnection::requireConnection() const
{
    if (const std::optional<QString> sentence = loss())
        throw PlatformError(*sentence);
}

void WaylandConnection::answer(void *data, wl_callback *callback, std::uint32_t)
{
    const std::unique_ptr<Answer> answer(static_cast<Answer *>(data));
    (*answer)->finish();
    wl_callback_destroy(callback);
}

QCoro::Task<void> WaylandConnection::roundTrip()
{
    requireConnection();
    static constexpr wl_callback_listener listener{&answer};
    const Answer answer = std::make_shared<QPromise<void>>();
    answer->start();
    m_awaited.append(answer);
    wl_callback *callback = wl_display_sync(m_display.get());
    wl_callback_add_listener(callback, &listener, new Answer(answer));
    flush();
    const QFuture<bool> finished = finishedWithin(answer->future(), Deadlines::answer);
    const bool isAnswered = co_await finished;
    m_awaited.removeOne(answer);
    if (!isAnswered)
        throw PlatformError(u"The Wayland compositor doesn't answer."_s);
    requireConnection();
}

QCoro::Task<bool> WaylandConnection::answers()
{
    try {
        co_await roundTrip();
        co_return true;
    } catch (const PlatformError &) {
        co_return false;
    }
}
